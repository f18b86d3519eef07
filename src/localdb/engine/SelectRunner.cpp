#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/tsql/Select.h"

namespace quarv::localdb::engine {

namespace {

// The values of the last row stay in the variables.
void Assign(const BoundQuery& query, SqliteStatement& statement, Frame& frame, ResultSink& sink) {
    int64_t rows = 0;
    while (statement.Step()) {
        for (size_t i = 0; i < query.items.size(); ++i) {
            const SqlValue value =
                ReadColumn(statement.Handle(), static_cast<int>(i), query.items[i]->type);
            frame.Variables().Set(query.assigned[i], value);
        }
        ++rows;
    }
    frame.Session().rowCount = rows;
    sink.StatementDone(StatementKind::Select, -1, false);
}

void SendRows(const BoundQuery& query, SqliteStatement& statement, Frame& frame, ResultSink& sink) {
    // The first row decides whether the statement fails before anything was sent.
    bool more = statement.Step();
    sink.BeginRows(query.columns);
    std::vector<Datum> row(query.columns.size());
    const int64_t limit = frame.Session().options.rowCount;
    int64_t rows = 0;
    while (more && (limit == 0 || rows < limit)) {
        for (size_t i = 0; i < row.size(); ++i) {
            ReadDatum(statement.Handle(), static_cast<int>(i), query.columns[i].type, row[i]);
        }
        sink.Row(row);
        ++rows;
        if (sink.Cancelled()) throw Cancelled();
        more = statement.Step();
    }
    frame.Session().rowCount = rows;
    sink.StatementDone(StatementKind::Select, frame.Session().options.noCount ? -1 : rows, false);
}

}  // namespace

void RunSelect(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const tsql::Query& tree = *static_cast<const tsql::Select&>(statement).query;
    if (tree.into) {
        RunSelectInto(tree, frame, sink);
        return;
    }
    SessionState& session = frame.Session();
    const Transactions::Reading reading(session.transactions);
    BindContext context = frame.NewContext();
    QueryBinder binder(context, nullptr);
    const std::unique_ptr<BoundQuery> query =
        binder.Bind(*static_cast<const tsql::Select&>(statement).query);
    SqlWriter writer(frame);
    query->Write(writer);
    SqliteStatement rows = writer.Prepare(session.store);
    const Store::Stoppable stoppable(session.store);
    if (query->assigned.empty()) {
        SendRows(*query, rows, frame, sink);
    } else {
        Assign(*query, rows, frame, sink);
    }
}

}  // namespace quarv::localdb::engine
