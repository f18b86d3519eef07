#include "localdb/server/ReplySink.h"

#include <QtEndian>
#include <algorithm>
#include <utility>

#include "localdb/server/ServerMessages.h"
#include "localdb/server/TypeMapping.h"
#include "localdb/tds/EnvChange.h"
#include "localdb/tds/ReturnStatus.h"
#include "localdb/tds/ReturnValue.h"

namespace quarv::localdb::server {

using tds::Done;
using tds::EnvChange;
using tds::Token;

namespace {

QByteArray DescriptorOf(uint64_t id) {
    QByteArray bytes(8, '\0');
    qToLittleEndian<quint64>(id, bytes.data());
    return bytes;
}

tds::RawValue RawValueOf(const RowEncoder::Plan& plan, const engine::Datum& value) {
    tds::BufferWriter buffer;
    plan.write(buffer, plan.type, value);
    tds::ByteReader reader(buffer.Written());
    return tds::RawValue::Decode(reader, plan.type, tds::Place::Row);
}

}  // namespace

ReplySink::ReplySink(ClientStream& stream, tds::Dialect dialect, Form form, QString serverName,
                     Log& log, bool& inTransaction, std::deque<uint16_t> outputs)
    : stream_(stream),
      writer_(stream.Writer()),
      dialect_(dialect),
      form_(form),
      serverName_(std::move(serverName)),
      log_(log),
      inTransaction_(inTransaction),
      outputs_(std::move(outputs)) {}

void ReplySink::Flush(uint16_t extraStatus) {
    if (!held_) return;
    held_->status |= extraStatus;
    held_->Encode(writer_, dialect_);
    held_.reset();
}

tds::ByteWriter& ReplySink::Next() {
    Flush(Done::More);
    return writer_;
}

void ReplySink::Hold(Token kind, uint16_t command, int64_t rowCount, bool failed) {
    Flush(Done::More);
    Done done;
    done.kind = kind;
    done.command = command;
    if (rowCount >= 0) {
        done.status |= Done::Count;
        done.count = static_cast<uint64_t>(rowCount);
    }
    if (failed) done.status |= Done::Error;
    if (inTransaction_) done.status |= Done::InTransaction;
    held_ = done;
}

void ReplySink::BeginRows(std::span<const engine::Column> columns) {
    rows_.Begin(Next(), columns, dialect_);
}

void ReplySink::Row(std::span<const engine::Datum> row) {
    if (stream_.Broken()) return;
    try {
        rows_.Write(writer_, row);
    } catch (const tds::ProtocolError&) {
        // Half a row cannot be taken back: the client must not take it for a whole one.
        stream_.Break();
    }
}

void ReplySink::StatementDone(engine::StatementKind kind, int64_t rowCount, bool failed) {
    Token token = Token::Done;
    if (depth_ > 0) {
        token = Token::DoneInProc;
    } else if (form_ == Form::Call || kind == engine::StatementKind::Execute) {
        token = Token::DoneProc;
    }
    if (depth_ == 0 && failed) failed_ = true;
    Hold(token, static_cast<uint16_t>(kind), rowCount, failed);
}

void ReplySink::Say(const engine::Message& message) {
    tds::ServerMessage wire;
    wire.number = message.number;
    wire.severity = static_cast<uint8_t>(std::clamp(message.severity, 0, 25));
    wire.state = static_cast<uint8_t>(std::clamp(message.state, 0, 255));
    wire.text = message.text;
    wire.procedure = message.procedure;
    wire.line = static_cast<uint32_t>(std::max(message.line, 0));
    wire.server = serverName_;
    Tell(wire);
    if (message.logged || message.severity >= engine::Message::FirstFatal) {
        log_.Write(QStringLiteral("session: error %1, severity %2: %3")
                       .arg(message.number)
                       .arg(message.severity)
                       .arg(message.text.simplified()));
    }
    if (message.severity >= engine::Message::FirstFatal) stream_.EndAfterReply();
}

void ReplySink::Tell(const tds::ServerMessage& message) {
    message.Encode(Next(), dialect_);
}

void ReplySink::DatabaseChanged(const QString& now, const QString& before) {
    EnvChange::OfText(EnvChange::Kind::Database, now, before).Encode(Next());
    Tell(MakeMessage(message::DatabaseChanged, {now}, serverName_));
}

void ReplySink::ProcedureBegins() {
    ++depth_;
}

void ReplySink::ReturnStatus(int status) {
    depth_ = std::max(0, depth_ - 1);
    // A procedure called by another one returns to that one; the client sees the outermost only.
    if (depth_ > 0) return;
    tds::ReturnStatus{status}.Encode(Next());
}

void ReplySink::ProcedureAborted() {
    depth_ = std::max(0, depth_ - 1);
}

void ReplySink::SendNow() {
    Flush(Done::More);
    stream_.Writer().SendNow();
}

void ReplySink::ReturnValue(const QString& name, const engine::SqlType& type,
                            const engine::Datum& value) {
    tds::ReturnValue wire;
    if (!outputs_.empty()) {
        wire.ordinal = outputs_.front();
        outputs_.pop_front();
    }
    wire.name = name;
    const RowEncoder::Plan plan = RowEncoder::PlanOf(type, dialect_);
    wire.type = plan.type;
    wire.value.null = value.null;
    try {
        if (!value.null) wire.value = RawValueOf(plan, value);
        wire.Encode(Next(), dialect_);
    } catch (const tds::ProtocolError&) {
        stream_.Break();
    }
}

void ReplySink::TransactionBegan(uint64_t id) {
    inTransaction_ = true;
    if (dialect_ == tds::Dialect::V71) return;
    EnvChange::OfBytes(EnvChange::Kind::BeginTransaction, DescriptorOf(id), {}).Encode(Next());
}

void ReplySink::TransactionEnded(uint64_t id, bool committed) {
    inTransaction_ = false;
    if (dialect_ == tds::Dialect::V71) return;
    const auto kind =
        committed ? EnvChange::Kind::CommitTransaction : EnvChange::Kind::RollbackTransaction;
    EnvChange::OfBytes(kind, {}, DescriptorOf(id)).Encode(Next());
}

void ReplySink::Finish(bool more) {
    const Token last = form_ == Form::Call ? Token::DoneProc : Token::Done;
    const bool isLast = held_ && held_->kind != Token::DoneInProc &&
                        (form_ == Form::Batch || held_->kind == Token::DoneProc);
    if (!isLast) {
        const auto command = static_cast<uint16_t>(
            form_ == Form::Call ? engine::StatementKind::Execute : engine::StatementKind::Other);
        Hold(last, command, -1, failed_ && form_ == Form::Call);
    }
    Flush(more ? Done::More : 0);
    depth_ = 0;
}

}  // namespace quarv::localdb::server
