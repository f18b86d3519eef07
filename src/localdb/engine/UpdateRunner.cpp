#include "localdb/engine/RowUpdater.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/tsql/Update.h"

namespace quarv::localdb::engine {

void RunUpdate(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::Update&>(statement);
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    const tsql::ObjectName target =
        ChangeQuery::TargetName(node.target, node.rows, context, QStringLiteral("UPDATE"));
    Transactions::Writing writing(session.transactions, context.MetadataFor(target).Prefix());
    RowUpdater updater(frame, context, node);
    updater.Run(sink);
    writing.Commit();
    session.rowCount = updater.Count();
    updater.SendOutput(sink);
    sink.StatementDone(StatementKind::Update, session.options.noCount ? -1 : updater.Count(),
                       false);
}

}  // namespace quarv::localdb::engine
