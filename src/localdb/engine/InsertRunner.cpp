#include "localdb/engine/CaptureSink.h"
#include "localdb/engine/ChangeQuery.h"
#include "localdb/engine/OutputRows.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/RowInserter.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TargetTable.h"
#include "localdb/tsql/Insert.h"

namespace quarv::localdb::engine {

namespace {

// TOP and SET ROWCOUNT, whichever is less.
void SetLimit(const tsql::Insert& insert, Frame& frame, BindContext& context,
              RowInserter& inserter) {
    const int64_t option = frame.Session().options.rowCount;
    if (option > 0) inserter.SetLimit(option);
    if (!insert.limit.top) return;
    QueryBinder binder(context, nullptr);
    const std::unique_ptr<BoundQuery> limit = binder.BindRows(insert.limit, nullptr);
    const int64_t top = frame.Compute(*limit->top).View().integer;
    inserter.SetLimit(option > 0 ? std::min(option, top) : top);
}

// The procedure runs before the table is touched.
void Capture(const tsql::Insert& insert, Frame& frame, CaptureSink& capture) {
    if (!insert.execute) return;
    SessionState& session = frame.Session();
    if (session.capturing) throw SqlError(8164, {}, insert.execute->line);
    session.capturing = true;
    session.captureLevel = session.transactions.Count();
    try {
        RunExecute(*insert.execute, frame, capture);
    } catch (...) {
        session.capturing = false;
        throw;
    }
    session.capturing = false;
}

// A view that rows are put in through, with the names of its table's columns.
struct InsertView {
    InsertView(const tsql::Insert& insert, BindContext& context) {
        target.name = insert.table;
        target.line = insert.line;
        query.emplace(context, target, rows, QStringLiteral("INSERT"));
        if (query->IsTable()) return;
        const std::vector<SourceColumn>& all = query->TargetSource().columns;
        for (const QString& name : insert.columns) Add(name);
        for (size_t i = 0; insert.columns.empty() && i < all.size(); ++i) {
            if (!IsIdentity(i)) Add(all[i].name);
        }
    }
    void Add(const QString& name) {
        const ColumnInfo* column = query->FindColumn(name);
        if (!column) throw SqlError(207, {name});
        columns.push_back(column->name);
    }
    // Left out where no names are given.
    bool IsIdentity(size_t column) {
        const std::optional<size_t> place = query->Changed().places[column];
        return place && query->Target().table.columns[*place].identity;
    }

    tsql::NamedTable target;
    tsql::Query rows;
    std::optional<ChangeQuery> query;
    std::vector<QString> columns;
};

bool IsView(const tsql::ObjectName& name, BindContext& context) {
    if (name.isVariable || context.System().FindView(name.schema, name.name)) return false;
    const std::optional<ObjectInfo> object = context.MetadataFor(name).Find(name.schema, name.name);
    return object && object->type == u"V";
}

void InsertAll(const tsql::Insert& insert, RowInserter& inserter, CaptureSink& capture,
               ResultSink& sink) {
    if (insert.execute) {
        for (const std::unique_ptr<RowSpool>& rows : capture.Sets()) {
            inserter.InsertSpool(*rows, sink);
        }
    } else if (insert.query) {
        inserter.InsertQuery(*insert.query, sink);
    } else if (insert.rows.empty()) {
        inserter.InsertDefaults();
    } else {
        inserter.InsertRows(insert.rows, sink);
    }
}

}  // namespace

void RunInsert(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& insert = static_cast<const tsql::Insert&>(statement);
    SessionState& session = frame.Session();
    CaptureSink capture(sink);
    // What the procedure does and the rows that it gives are one change.
    std::optional<Transactions::Whole> whole;
    if (insert.execute) whole.emplace(session.transactions);
    Capture(insert, frame, capture);
    BindContext context = frame.NewContext();
    // What is known of the table, its last identity value too, is read behind the lock.
    std::optional<InsertView> view;
    if (IsView(insert.table, context)) view.emplace(insert, context);
    const tsql::ObjectName& name = view ? view->query->Changed().path->Table() : insert.table;
    Transactions::Writing writing(session.transactions, context.MetadataFor(name).Prefix());
    TargetTable target = TargetTable::Open(name, context, QStringLiteral("INSERT"));
    RowInserter inserter(frame, context, target.metadata, target.table,
                         view ? view->columns : insert.columns);
    if (view) inserter.SetView(&view->query->Changed());
    if (view && insert.output) throw SqlError(40517, {QStringLiteral("OUTPUT of a view")});
    SetLimit(insert, frame, context, inserter);
    std::optional<OutputRows> output;
    if (insert.output) {
        output.emplace(frame, context, *insert.output, target.table, OutputRows::Sides{true, false},
                       nullptr);
        inserter.SetOutput(&*output);
    }
    InsertAll(insert, inserter, capture, sink);
    inserter.Finish();
    if (output) output->Store(sink);
    writing.Commit();
    if (whole) whole->Commit();
    if (target.variable) target.variable->identity = inserter.Identity();
    session.rowCount = inserter.Count();
    if (output) output->Send(sink);
    sink.StatementDone(StatementKind::Insert, session.options.noCount ? -1 : inserter.Count(),
                       false);
}

}  // namespace quarv::localdb::engine
