#include "localdb/engine/RowInserter.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/tsql/Insert.h"

namespace quarv::localdb::engine {

namespace {

TableInfo FindTarget(const tsql::Insert& insert, Metadata& metadata, Frame& frame) {
    const tsql::ObjectName& name = insert.table;
    if (frame.Session().objects.FindView(name.schema, name.name)) {
        throw SqlError(259, {}, name.line);
    }
    const std::optional<ObjectInfo> object = metadata.Find(name.schema, name.name);
    if (object && object->type == u"V") {
        throw SqlError(40517, {QStringLiteral("INSERT into a view")}, name.line);
    }
    if (!object || object->type != u"U") throw SqlError(208, {name.ToText()}, name.line);
    return metadata.LoadTable(*object);
}

}  // namespace

void RunInsert(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& insert = static_cast<const tsql::Insert&>(statement);
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    Metadata metadata = context.MetadataFor(insert.table);
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    const TableInfo table = FindTarget(insert, metadata, frame);
    RowInserter inserter(frame, context, metadata, table, insert.columns);
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
    session.rowCount = inserter.Count();
    sink.StatementDone(StatementKind::Insert, session.options.noCount ? -1 : inserter.Count(),
                       false);
}

}  // namespace quarv::localdb::engine
