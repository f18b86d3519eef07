// BEGIN, COMMIT, ROLLBACK and SAVE TRANSACTION, and USE.
#include "localdb/engine/StatementRunner.h"
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

}  // namespace

void RunTransaction(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::Transaction&>(statement);
    Transactions& transactions = frame.Session().transactions;
    CheckCapture(node.verb, frame.Session());
    switch (node.verb) {
        case tsql::TransactionVerb::Begin:
            transactions.Begin(node.name, sink);
            break;
        case tsql::TransactionVerb::Commit:
            transactions.Commit(sink);
            break;
        case tsql::TransactionVerb::Rollback:
            transactions.Rollback(node.name, sink);
            break;
        case tsql::TransactionVerb::Save:
            transactions.Save(node.name);
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
