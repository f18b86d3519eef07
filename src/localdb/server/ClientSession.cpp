#include "localdb/server/ClientSession.h"

#include <array>
#include <new>
#include <utility>

#include "localdb/server/Arguments.h"
#include "localdb/server/LoginReply.h"
#include "localdb/server/ServerMessages.h"
#include "localdb/tds/EnvChange.h"
#include "localdb/tds/SqlBatch.h"
#include "localdb/tds/TransactionRequest.h"

namespace quarv::localdb::server {

using tds::PacketType;

ClientSession::ClientSession(Socket socket, std::span<const std::byte> early, tds::Login7 login,
                             const Settings& settings, engine::Server& engine, Log& log)
    : stream_(std::move(socket), early, settings.largestRequest),
      login_(std::move(login)),
      dialect_(tds::NearestDialect(login_.tdsVersion)),
      settings_(settings),
      engine_(engine),
      log_(log) {}

ClientSession::~ClientSession() = default;

void ClientSession::Run() {
    try {
        if (LogIn()) Serve();
    } catch (const tds::ProtocolError& error) {
        log_.Write(QStringLiteral("session: closed: ") + error.Description());
    } catch (const Error& error) {
        log_.Write(QStringLiteral("session: ended by an error: ") + error.Description());
    } catch (const std::bad_alloc&) {
        log_.Write(QStringLiteral("session: closed: out of memory"));
    }
    stream_.Finish();
    session_.reset();
}

bool ClientSession::LogIn() {
    session_ = engine_.NewSession(settings_.account.Name());
    session_->SetClient(login_.hostName, login_.appName);
    stream_.Writer().SetSpid(static_cast<uint16_t>(session_->Id()));
    if (!login_.database.isEmpty()) {
        try {
            session_->UseDatabase(login_.database);
        } catch (const Error& error) {
            log_.Write(QStringLiteral("login: refused: ") + error.Description());
            RefuseDatabase(login_.database);
            return false;
        }
    }
    login_.database = session_->Database();
    WriteLoginReply(stream_.Writer(), settings_, login_.database, login_.tdsVersion,
                    PacketSizeFor(login_.packetSize));
    return true;
}

void ClientSession::RefuseDatabase(const QString& database) {
    const std::array messages{
        MakeMessage(message::CannotOpenDatabase, {database}, settings_.serverName),
        MakeMessage(message::LoginFailed, {login_.userName}, settings_.serverName)};
    WriteLoginRefusal(stream_.Writer(), messages, dialect_);
}

void ClientSession::Serve() {
    for (;;) {
        std::optional<tds::Message> message;
        try {
            message = stream_.NextMessage();
            if (!message) return;
            Handle(*message);
            if (stream_.Ending()) return;
        } catch (const tds::ProtocolError& error) {
            log_.Write(QStringLiteral("session: ") + error.Description());
            if (error.Outcome() == tds::ProtocolError::Kind::Unsupported) {
                RefuseRequest(message::RpcParameterType, error.Description());
                continue;
            }
            RefuseRequest(message::ProtocolStream, error.Description());
            return;
        }
    }
}

void ClientSession::Handle(const tds::Message& message) {
    if (message.type == PacketType::Attention) {
        AcknowledgeAttention();
        return;
    }
    if (message.Ignored()) {
        NewSink(ReplySink::Form::Batch).Finish();
    } else if (message.type == PacketType::Rpc) {
        RunCalls(message);
    } else {
        ReplySink sink = NewSink(ReplySink::Form::Batch);
        Dispatch(message, sink);
        sink.Finish();
    }
    stream_.Writer().EndMessage();
    if (stream_.TakeAttention()) AcknowledgeAttention();
}

void ClientSession::Dispatch(const tds::Message& message, ReplySink& sink) {
    switch (message.type) {
        case PacketType::Batch:
            RunBatch(message, sink);
            break;
        case PacketType::Transaction:
            RunTransactionRequest(message, sink);
            break;
        case PacketType::Bulk:
            sink.Tell(MakeMessage(message::NotSupported, {QStringLiteral("bulk load")},
                                  settings_.serverName));
            sink.StatementDone(engine::StatementKind::Other, -1, true);
            break;
        default:
            throw tds::ProtocolError(tds::Fault::PacketType, 0);
    }
}

ReplySink ClientSession::NewSink(ReplySink::Form form, std::deque<uint16_t> outputs) {
    return {stream_,        dialect_,          form, settings_.serverName, log_,
            inTransaction_, std::move(outputs)};
}

void ClientSession::RunBatch(const tds::Message& message, ReplySink& sink) {
    const tds::SqlBatch batch = tds::SqlBatch::Decode(message.body, dialect_);
    ResetWhereAsked(message);
    try {
        session_->RunBatch(batch.sql, sink);
    } catch (const std::bad_alloc&) {
        sink.Tell(MakeMessage(message::OutOfMemory, {}, settings_.serverName));
        sink.StatementDone(engine::StatementKind::Other, -1, true);
    }
}

void ClientSession::RunCalls(const tds::Message& message) {
    const tds::RpcRequest request = tds::RpcRequest::Decode(message.body, dialect_);
    // All arguments are read before the first call runs: a damaged one leaves nothing half done.
    std::vector<std::vector<engine::Argument>> arguments;
    for (const tds::RpcCall& call : request.calls)
        arguments.push_back(ArgumentsOf(call.parameters));
    ResetWhereAsked(message);
    for (size_t i = 0; i < request.calls.size(); ++i) {
        const tds::RpcCall& call = request.calls[i];
        std::deque<uint16_t> outputs;
        for (size_t p = 0; p < arguments[i].size(); ++p) {
            if (arguments[i][p].output) outputs.push_back(static_cast<uint16_t>(p));
        }
        ReplySink sink = NewSink(ReplySink::Form::Call, std::move(outputs));
        RunCall(call, arguments[i], sink);
        const bool last = i + 1 == request.calls.size() || stream_.StopWanted();
        sink.Finish(!last);
        if (last) break;
    }
}

void ClientSession::RunCall(const tds::RpcCall& call,
                            const std::vector<engine::Argument>& arguments, ReplySink& sink) {
    const QString name = call.procedureId != 0 ? tds::ProcedureNameOf(call.procedureId) : call.name;
    try {
        session_->RunProcedure(name, arguments, sink);
    } catch (const std::bad_alloc&) {
        sink.Tell(MakeMessage(message::OutOfMemory, {}, settings_.serverName));
        sink.StatementDone(engine::StatementKind::Other, -1, true);
    }
}

void ClientSession::RunTransactionRequest(const tds::Message& message, ReplySink& sink) {
    const auto request = tds::TransactionRequest::Decode(message.body);
    ResetWhereAsked(message);
    switch (request.kind) {
        case tds::TransactionRequest::Kind::Begin:
            session_->BeginTransaction(sink, request.name, request.isolation);
            return;
        case tds::TransactionRequest::Kind::Save:
            session_->SaveTransaction(sink, request.name);
            return;
        case tds::TransactionRequest::Kind::Commit:
            session_->CommitTransaction(sink);
            break;
        case tds::TransactionRequest::Kind::Rollback:
            session_->RollbackTransaction(sink, request.name);
            break;
    }
    if (request.beginsNext) {
        session_->BeginTransaction(sink, request.nextName, request.nextIsolation);
    }
}

void ClientSession::ResetWhereAsked(const tds::Message& message) {
    if ((message.status & tds::packet_status::ResetConnection) == 0) return;
    session_->Reset(login_.database);
    inTransaction_ = false;
    tds::EnvChange::OfBytes(tds::EnvChange::Kind::ResetAcknowledged, {}, {})
        .Encode(stream_.Writer());
}

void ClientSession::RefuseRequest(int number, const QString& what) {
    ReplySink sink = NewSink(ReplySink::Form::Batch);
    sink.Tell(MakeMessage(number, {what}, settings_.serverName));
    sink.StatementDone(engine::StatementKind::Other, -1, true);
    sink.Finish();
    stream_.Writer().EndMessage();
}

void ClientSession::AcknowledgeAttention() {
    stream_.TakeAttention();
    tds::Done done;
    done.status = tds::Done::Attention;
    if (inTransaction_) done.status |= tds::Done::InTransaction;
    done.Encode(stream_.Writer(), dialect_);
    stream_.Writer().EndMessage();
}

}  // namespace quarv::localdb::server
