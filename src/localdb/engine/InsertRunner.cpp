#include "localdb/engine/CaptureSink.h"
#include "localdb/engine/OutputRows.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/RowInserter.h"
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
    Transactions::Writing writing(session.transactions, context.MetadataFor(insert.table).Prefix());
    TargetTable target = TargetTable::Open(insert.table, context, QStringLiteral("INSERT"));
    RowInserter inserter(frame, context, target.metadata, target.table, insert.columns);
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
