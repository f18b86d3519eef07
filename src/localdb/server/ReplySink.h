// ReplySink: what a running request produces, as tokens of one reply, in order. Holds back each
// DONE until it is known whether something follows it. Knows neither requests nor sessions.
#pragma once

#include <deque>
#include <optional>

#include "localdb/engine/ResultSink.h"
#include "localdb/server/ClientStream.h"
#include "localdb/server/Log.h"
#include "localdb/server/RowEncoder.h"
#include "localdb/tds/Done.h"
#include "localdb/tds/ServerMessage.h"

namespace quarv::localdb::server {

class ReplySink final : public engine::ResultSink {
  public:
    enum class Form { Batch, Call };

    // A reply to a batch, or to a procedure call. `inTransaction` outlives single replies and is
    // the session's. `outputs` are the ordinals of a call's output parameters.
    ReplySink(ClientStream& stream, tds::Dialect dialect, Form form, QString serverName, Log& log,
              bool& inTransaction, std::deque<uint16_t> outputs = {});

    void BeginRows(std::span<const engine::Column> columns) override;
    void Row(std::span<const engine::Datum> row) override;
    void StatementDone(engine::StatementKind kind, int64_t rowCount, bool failed) override;
    void Say(const engine::Message& message) override;
    void DatabaseChanged(const QString& now, const QString& before) override;
    void ProcedureBegins() override;
    void ReturnStatus(int status) override;
    void ReturnValue(const QString& name, const engine::SqlType& type,
                     const engine::Datum& value) override;
    void ProcedureAborted() override;
    void SendNow() override;
    void TransactionBegan(uint64_t id) override;
    void TransactionEnded(uint64_t id, bool committed) override;
    bool Cancelled() override { return stream_.StopWanted(); }

    // A message of the server's own.
    void Tell(const tds::ServerMessage& message);
    // Writes what was held back and the reply's last token; the caller ends the wire's message.
    // With `more`, another call's reply follows in the same message.
    void Finish(bool more = false);

  private:
    tds::ByteWriter& Next();
    void Hold(tds::Token kind, uint16_t command, int64_t rowCount, bool failed);
    void Flush(uint16_t extraStatus);

    ClientStream& stream_;
    tds::ByteWriter& writer_;
    tds::Dialect dialect_;
    Form form_;
    QString serverName_;
    Log& log_;
    bool& inTransaction_;
    std::deque<uint16_t> outputs_;
    RowEncoder rows_;
    std::optional<tds::Done> held_;
    int depth_ = 0;  // procedures that are running
    bool failed_ = false;
};

}  // namespace quarv::localdb::server
