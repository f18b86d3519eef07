#include "localdb/engine/ParseCache.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/Select.h"

namespace quarv::localdb::engine {

namespace {

void CollectLeaves(const BoundExpression& node, std::vector<const BoundExpression*>& leaves) {
    if (node.IsLeaf()) {
        node.slot = leaves.size();
        leaves.push_back(&node);
        return;
    }
    for (const BoundPtr& part : node.parts) CollectLeaves(*part, leaves);
}

// One row after another, each with what the one before has left in the variables, as in
// "select @list = @list + name from t order by name": the storage brings what the values are
// computed from. With DISTINCT the values themselves make the rows.
class Assignment {
  public:
    Assignment(BoundQuery& query, Frame& frame) : query_(query), frame_(frame) {
        query.asLeaves = !query.distinct;
        if (!query.asLeaves) return;
        for (const BoundPtr& item : query.items) CollectLeaves(*item, query.leaves);
        values_.resize(query.leaves.size());
    }

    void Run(SqliteStatement& statement, ResultSink& sink) {
        int64_t rows = 0;
        for (; statement.Step(); ++rows) {
            if (query_.asLeaves) {
                TakeLeaves(statement);
            } else {
                TakeItems(statement);
            }
        }
        frame_.Session().rowCount = rows;
        sink.StatementDone(StatementKind::Select, -1, false);
    }

  private:
    void TakeItems(SqliteStatement& statement) {
        for (size_t i = 0; i < query_.items.size(); ++i) {
            frame_.Variables().Set(
                query_.assigned[i],
                ReadColumn(statement.Handle(), static_cast<int>(i), query_.items[i]->type));
        }
    }
    void TakeLeaves(SqliteStatement& statement) {
        for (size_t i = 0; i < values_.size(); ++i) {
            values_[i] =
                ReadColumn(statement.Handle(), static_cast<int>(i), query_.leaves[i]->type);
        }
        const Evaluation evaluation{values_.data(), &arena_, &frame_};
        for (size_t i = 0; i < query_.items.size(); ++i) {
            frame_.Variables().Set(query_.assigned[i], query_.items[i]->Evaluate(evaluation));
        }
        arena_.Reset();
    }

    BoundQuery& query_;
    Frame& frame_;
    std::vector<SqlValue> values_;
    TextArena arena_;
};

// SET TEXTSIZE: how many bytes of a long value are sent.
class TextLimit {
  public:
    TextLimit(const std::vector<Column>& columns, int size) : size_(static_cast<size_t>(size)) {
        if (size == SessionOptions().textSize) return;
        for (size_t i = 0; i < columns.size(); ++i) {
            const SqlType& type = columns[i].type;
            const bool long_ = type.length == SqlType::Max && type.kind != TypeKind::Xml;
            if (!long_ && !IsOldLong(type.kind)) continue;
            const bool wide = type.kind == TypeKind::NVarChar || type.kind == TypeKind::NText;
            places_.push_back({i, wide ? size_ / 2 : size_});
        }
    }
    void Cut(std::vector<Datum>& row) const {
        for (const Place& place : places_) {
            Datum& datum = row[place.index];
            datum.text = TakeUtf16(datum.text, place.units);
            if (datum.bytes.size() > size_) datum.bytes = datum.bytes.first(size_);
        }
    }

  private:
    struct Place {
        size_t index;
        size_t units;
    };
    size_t size_;
    std::vector<Place> places_;
};

void SendRows(const std::vector<Column>& columns, SqliteStatement& statement, Frame& frame,
              ResultSink& sink) {
    // The first row decides whether the statement fails before anything was sent.
    bool more = statement.Step();
    sink.BeginRows(columns);
    std::vector<Datum> row(columns.size());
    const int64_t limit = frame.Session().options.rowCount;
    const TextLimit textLimit(columns, frame.Session().options.textSize);
    int64_t rows = 0;
    while (more && (limit == 0 || rows < limit)) {
        for (size_t i = 0; i < row.size(); ++i) {
            ReadDatum(statement.Handle(), static_cast<int>(i), columns[i].type, row[i]);
        }
        textLimit.Cut(row);
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
    if (static_cast<const tsql::Select&>(statement).query->into) {
        RunSelectInto(*static_cast<const tsql::Select&>(statement).query, frame, sink);
        return;
    }
    SessionState& session = frame.Session();
    const Transactions::Reading reading(session.transactions);
    const Store::Stoppable stoppable(session.store);
    RepeatedSelects::Batch* batch = session.parsed->Repeated().RunningAs(statement);
    if (batch) {
        if (std::optional<SqliteStatement> rows = batch->Prepare(frame)) {
            SendRows(batch->Columns(), *rows, frame, sink);
            return;
        }
    }
    const tsql::Statement& own = batch ? batch->OwnStatement() : statement;
    BindContext context = frame.NewContext();
    QueryBinder binder(context, nullptr);
    const std::unique_ptr<BoundQuery> query =
        binder.Bind(*static_cast<const tsql::Select&>(own).query);
    std::optional<Assignment> assignment;
    if (!query->assigned.empty()) assignment.emplace(*query, frame);
    SqlWriter writer(frame);
    query->Write(writer);
    if (batch) batch->Learn(frame, *query, writer);
    SqliteStatement rows = writer.Prepare(session.store);
    if (assignment) {
        assignment->Run(rows, sink);
    } else {
        SendRows(query->columns, rows, frame, sink);
    }
}

}  // namespace quarv::localdb::engine
