// ResultSink: where a running batch sends what it produces, in the order in which a client sees it.
// The session's wire writer implements it, and so do tests. The engine owns none of it.
#pragma once

#include <QString>
#include <cstdint>
#include <span>

#include "localdb/engine/Datum.h"
#include "localdb/engine/SqlType.h"

namespace quarv::localdb::engine {

struct Column {
    QString name;  // empty for an unnamed expression
    SqlType type;
    bool nullable = true;
    bool identity = false;
    bool computed = false;  // an expression or a computed column: not updatable
};

// A message or an error, as sys.messages numbers them. Severity below 11 is information.
struct Message {
    // From this severity on an error ends the connection, and no CATCH block sees it ("Database
    // Engine error severities").
    static constexpr int FirstFatal = 20;

    int number = 0;
    int severity = 0;  // 0..25
    int state = 1;     // 0..255
    QString text;
    QString procedure;    // empty outside a procedure
    int line = 0;         // 1-based within the batch or procedure
    bool logged = false;  // RAISERROR ... WITH LOG: the server's own log keeps it as well
};

// What a statement was, for the command word of the DONE token ([MS-TDS], "DONE").
enum class StatementKind : uint16_t {
    Select = 0xC1,
    Insert = 0xC3,
    Delete = 0xC4,
    Update = 0xC5,
    Execute = 0xE0,  // the end of an EXEC in a batch, behind its return status
    Other = 0xFD,
};

class ResultSink {
  public:
    virtual ~ResultSink() = default;

    // Begins a result set; Row calls until the next StatementDone belong to it.
    virtual void BeginRows(std::span<const Column> columns) = 0;
    // As many data as columns, of those columns' types or null. Valid during the call only.
    virtual void Row(std::span<const Datum> row) = 0;
    // Ends a statement. `rowCount` is -1 where the statement counts nothing (DDL, SET NOCOUNT ON).
    virtual void StatementDone(StatementKind kind, int64_t rowCount, bool failed) = 0;
    virtual void Say(const Message& message) = 0;
    // The sink tells the client, with message 5701 where its protocol wants it.
    virtual void DatabaseChanged(const QString& now, const QString& before) = 0;

    // What follows up to the matching ReturnStatus comes from inside a procedure; calls nest.
    virtual void ProcedureBegins() {}
    // The end of a procedure. An EXEC inside a batch is then closed by StatementDone(Execute); a
    // procedure that Session::RunProcedure was asked for is not.
    virtual void ReturnStatus(int status) = 0;
    // Instead of ReturnStatus: an error left the procedure for a CATCH block of one that called it.
    virtual void ProcedureAborted() {}
    // The final value of an output parameter, behind ReturnStatus. `name` has its "@" or is empty.
    virtual void ReturnValue(const QString& /*name*/, const SqlType& /*type*/,
                             const Datum& /*value*/) {}
    // `id` is never 0 and unique within the server's run.
    virtual void TransactionBegan(uint64_t /*id*/) {}
    virtual void TransactionEnded(uint64_t /*id*/, bool /*committed*/) {}

    // What was sent up to here reaches the client now, not with the next full packet.
    virtual void SendNow() {}

    // True once the client has asked to stop; asked between rows and while long statements run.
    virtual bool Cancelled() = 0;
};

}  // namespace quarv::localdb::engine
