// BEGIN, COMMIT, ROLLBACK and SAVE TRANSACTION, and USE.
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/Transaction.h"
#include "localdb/tsql/Use.h"

namespace quarv::localdb::engine {

namespace {

// The transaction of an INSERT ... EXECUTE is not its procedure's to end.
void CheckCapture(tsql::TransactionVerb verb, const SessionState& session) {
    if (!session.capturing) return;
    if (verb == tsql::TransactionVerb::Rollback) throw SqlError(3915);
    const bool own = session.transactions.Count() > session.captureLevel;
    if (verb == tsql::TransactionVerb::Commit && !own) throw SqlError(3916);
}

// Of a name that a variable holds the first 32 characters count.
QString NameOf(const tsql::Transaction& node, const Frame& frame, const VariableTable& variables) {
    constexpr int MaxLength = 32;
    if (node.variable.isEmpty()) return node.name;
    const std::optional<size_t> index = variables.Find(node.variable);
    if (!index) throw SqlError(137, {node.variable});
    return FromUtf8(frame.VariableValue(*index).text).left(MaxLength);
}

}  // namespace

void RunTransaction(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::Transaction&>(statement);
    Transactions& transactions = frame.Session().transactions;
    CheckCapture(node.verb, frame.Session());
    const QString name = NameOf(node, frame, frame.Variables());
    switch (node.verb) {
        case tsql::TransactionVerb::Begin:
            transactions.Begin(name, sink);
            break;
        case tsql::TransactionVerb::Commit:
            transactions.Commit(sink);
            break;
        case tsql::TransactionVerb::Rollback:
            transactions.Rollback(name, sink);
            break;
        case tsql::TransactionVerb::Save:
            transactions.Save(name);
            break;
    }
    sink.StatementDone(StatementKind::Other, -1, false);
}

void RunUse(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::Use&>(statement);
    SessionState& session = frame.Session();
    const QString before = session.database.name;
    session.ChangeDatabase(node.database);
    // The sink says so to the client (message 5701).
    sink.DatabaseChanged(session.database.name, before);
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
