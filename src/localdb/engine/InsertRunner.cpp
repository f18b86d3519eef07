#include "localdb/engine/RowInserter.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TargetTable.h"
#include "localdb/tsql/Insert.h"

namespace quarv::localdb::engine {

void RunInsert(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& insert = static_cast<const tsql::Insert&>(statement);
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    // What is known of the table, its last identity value too, is read behind the lock.
    Transactions::Writing writing(session.transactions, context.MetadataFor(insert.table).Prefix());
    TargetTable target = TargetTable::Open(insert.table, context, QStringLiteral("INSERT"));
    RowInserter inserter(frame, context, target.metadata, target.table, insert.columns);
    if (insert.query) {
        inserter.InsertQuery(*insert.query, sink);
    } else if (insert.rows.empty()) {
        inserter.InsertRow({});
    } else {
        for (const tsql::ExpressionList& row : insert.rows) {
            if (sink.Cancelled()) throw Cancelled();
            inserter.InsertRow(row);
        }
    }
    inserter.Finish();
    writing.Commit();
    if (target.variable) target.variable->identity = inserter.Identity();
    session.rowCount = inserter.Count();
    sink.StatementDone(StatementKind::Insert, session.options.noCount ? -1 : inserter.Count(),
                       false);
}

}  // namespace quarv::localdb::engine
