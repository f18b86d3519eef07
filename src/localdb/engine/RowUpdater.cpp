#include "localdb/engine/RowUpdater.h"

#include <algorithm>

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

// Computed anew for every row, whatever it stands over: its second part, a column, says so.
class BoundPerRow : public BoundExpression {
  public:
    BoundPerRow(BoundPtr value, BoundPtr column) {
        type = value->type;
        nullable = value->nullable;
        parts.push_back(std::move(value));
        parts.push_back(std::move(column));
    }
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return parts[0]->Evaluate(evaluation);
    }
};

// Gives its value and leaves it in a variable.
class BoundAssign : public BoundExpression {
  public:
    BoundAssign(size_t variable, BoundPtr value) : variable_(variable) {
        type = value->type;
        nullable = value->nullable;
        parts.push_back(std::move(value));
    }
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        const SqlValue value = parts[0]->Evaluate(evaluation);
        evaluation.environment->AssignVariable(variable_, value);
        return value;
    }
    std::string Detail() const override { return std::to_string(variable_); }

  private:
    size_t variable_;
};

bool IsDefaultWord(const tsql::Expression& expression) {
    return expression.kind == tsql::ExpressionKind::Literal &&
           static_cast<const tsql::Literal&>(expression).literal == tsql::LiteralKind::Default;
}

}  // namespace

RowUpdater::RowUpdater(Frame& frame, BindContext& context, const tsql::Update& update)
    : frame_(frame),
      context_(context),
      query_(context, update.target, update.rows, QStringLiteral("UPDATE")),
      table_(query_.Target().table),
      checker_(query_.Target().metadata, table_, QStringLiteral("UPDATE")),
      checks_(frame, query_.Target().metadata, table_, QStringLiteral("UPDATE")),
      row_(table_.columns.size()) {
    const bool assigns = std::any_of(update.assignments.begin(), update.assignments.end(),
                                     [](const auto& item) { return !item.variable.isEmpty(); });
    for (const tsql::Update::Assignment& assignment : update.assignments) {
        try {
            BindAssignment(assignment, assigns);
        } catch (SqlError& error) {
            if (error.What().line == 0) error.SetLine(assignment.line);
            throw;
        }
    }
    for (size_t i = 0; i < table_.columns.size(); ++i) {
        if (table_.columns[i].type.kind == TypeKind::RowVersion) targets_.push_back({i, Stamped});
    }
    moves_ = ChangesKey();
    const bool whole =
        moves_ || update.output || checks_.NeedsRows() || !query_.Changed().checks.empty();
    for (size_t i = 0; whole && i < table_.columns.size(); ++i) old_.push_back(query_.AddOld(i));
    if (update.output && !query_.IsTable()) {
        throw SqlError(40517, {QStringLiteral("OUTPUT of a view")}, update.line);
    }
    if (update.output) BindOutput(*update.output);
}

void RowUpdater::BindOutput(const tsql::OutputClause& clause) {
    output_.emplace(frame_, context_, clause, table_, OutputRows::Sides{true, true},
                    &query_.Names());
    for (BoundPtr& item : output_->CopyOthers()) others_.push_back(query_.Add(std::move(item)));
    other_.resize(others_.size());
}

size_t RowUpdater::FindColumn(const tsql::ObjectName& name) const {
    const ColumnInfo* column = query_.FindColumn(name.name);
    const bool qualified = !name.schema.isEmpty();
    if (qualified && !SameName(name.schema, query_.TargetSource().name)) {
        throw SqlError(4104, {name.ToText()}, name.line);
    }
    if (!column) throw SqlError(207, {name.name}, name.line);
    if (column->IsComputed()) throw SqlError(271, {column->name}, name.line);
    if (column->identity) throw SqlError(8102, {column->name}, name.line);
    if (column->type.kind == TypeKind::RowVersion) throw SqlError(272, {}, name.line);
    return static_cast<size_t>(column - table_.columns.data());
}

BoundPtr RowUpdater::BindValue(const tsql::Update::Assignment& assignment,
                               std::optional<size_t> column) {
    if (IsDefaultWord(*assignment.value)) {
        return RowChecker::BindDefault(context_, table_.columns[*column]);
    }
    ExpressionBinder binder(context_, query_.Names());
    BoundPtr value = binder.Value(*assignment.value);
    if (assignment.sign == 0) return value;
    BoundPtr old;
    if (column) {
        const SourceColumn& source = query_.BaseColumn(*column);
        old = std::make_unique<BoundColumn>(source.sql, source.name, source.type);
        old->nullable = source.nullable;
    } else {
        old = binder.Value(tsql::Variable(assignment.variable));
    }
    return ExpressionBinder::Combine(assignment.sign, std::move(old), std::move(value));
}

BoundPtr RowUpdater::AssignTo(const QString& variable, BoundPtr value) {
    const std::optional<size_t> index = context_.Variables().Find(variable);
    if (!index) throw SqlError(137, {variable});
    value = ExpressionBinder::Convert(std::move(value), context_.Variables().At(*index).type);
    return std::make_unique<BoundAssign>(*index, std::move(value));
}

BoundPtr RowUpdater::ForEachRow(BoundPtr value) const {
    const SourceColumn& column = query_.BaseColumn(0);
    return std::make_unique<BoundPerRow>(
        std::move(value), std::make_unique<BoundColumn>(column.sql, column.name, column.type));
}

void RowUpdater::BindAssignment(const tsql::Update::Assignment& assignment, bool assigns) {
    std::optional<size_t> column;
    if (!assignment.column.name.isEmpty()) column = FindColumn(assignment.column);
    for (const Target& other : targets_) {
        if (column == other.column) throw SqlError(264, {assignment.column.name});
    }
    BoundPtr value = BindValue(assignment, column);
    if (!assignment.variable.isEmpty()) value = AssignTo(assignment.variable, std::move(value));
    if (column) value = RowChecker::ConvertTo(std::move(value), table_.columns[*column]);
    if (assigns) value = ForEachRow(std::move(value));
    const size_t item = query_.Add(std::move(value));
    if (column) targets_.push_back({*column, item});
}

// A column of any unique index is assigned.
bool RowUpdater::ChangesKey() const {
    const auto assigned = [this](const IndexInfo::Key& key) {
        // A computed column may change with any other.
        if (table_.FindColumn(key.columnId)->IsComputed()) return true;
        return std::any_of(targets_.begin(), targets_.end(), [&](const Target& target) {
            return table_.columns[target.column].id == key.columnId;
        });
    };
    return std::any_of(table_.indexes.begin(), table_.indexes.end(), [&](const IndexInfo& index) {
        return index.unique && std::any_of(index.keys.begin(), index.keys.end(), assigned);
    });
}

void RowUpdater::BindKey(SqliteStatement& statement, const SqliteStatement& rows, int first) const {
    const std::vector<SqlType>& types = query_.KeyTypes();
    for (size_t i = 0; i < types.size(); ++i) {
        const int column = static_cast<int>(i);
        statement.Bind(first + column, ReadColumn(rows.Handle(), column, types[i]), types[i]);
    }
}

// The new values, checked, of the query's current row.
void RowUpdater::ReadRow(const SqliteStatement& rows) {
    const auto read = [&](size_t item) {
        return ReadColumn(rows.Handle(), static_cast<int>(item), query_.Query().items[item]->type);
    };
    for (size_t i = 0; i < old_.size(); ++i) row_[i] = read(old_[i]);
    if (output_ || checks_.NeedsRows()) before_ = row_;
    RowChecker::Stamp(query_.Target().metadata, table_, row_);
    for (const Target& target : targets_) {
        if (target.item == Stamped) continue;
        row_[target.column] = read(target.item);
        checker_.Check(table_.columns[target.column], row_[target.column]);
    }
    if (checks_.NeedsRows()) {
        checks_.Complete(row_);
        checks_.Check(row_);
    }
    query_.Changed().Check(row_, frame_);
    if (!output_) return;
    for (size_t i = 0; i < others_.size(); ++i) other_[i] = read(others_[i]);
    output_->Add(&row_, &before_, other_);
}

void RowUpdater::ChangeInPlace(SqliteStatement& rows, ResultSink& sink) {
    std::string sql;
    int number = 0;
    std::vector<size_t> changed;  // columns, those computed from them included
    for (const Target& target : targets_) changed.push_back(target.column);
    for (size_t i = 0; i < table_.columns.size() && !targets_.empty(); ++i) {
        if (table_.columns[i].IsComputed() && table_.columns[i].stored) changed.push_back(i);
    }
    for (const size_t column : changed) {
        sql += (sql.empty() ? " SET " : ", ") + table_.columns[column].StorageName() + " = ?" +
               std::to_string(++number);
    }
    SqliteStatement change;
    if (number > 0) {
        change = frame_.Session().store.Prepare("UPDATE " + Prefix() + table_.StorageName() + sql +
                                                query_.KeyCondition(number + 1));
    }
    while (rows.Step()) {
        if (sink.Cancelled()) throw Cancelled();
        ReadRow(rows);
        ++count_;
        if (number == 0) continue;
        for (size_t i = 0; i < changed.size(); ++i) {
            const size_t column = changed[i];
            change.Bind(static_cast<int>(i) + 1, row_[column].View(), table_.columns[column].type);
        }
        BindKey(change, rows, number + 1);
        change.Run();
        if (checks_.NeedsRows()) checks_.Updated(before_, row_);
    }
}

void RowUpdater::ChangeByMoving(SqliteStatement& rows, ResultSink& sink) {
    Store& store = frame_.Session().store;
    const TableStorage storage(store, query_.Target().metadata);
    // A heap's row keeps its number, which stands behind its columns.
    const bool numbered = !TableStorage::StorageKey(table_);
    std::vector<SqlType> types;
    for (const ColumnInfo& column : table_.columns) types.push_back(column.type);
    if (numbered) types.push_back(MakeType(TypeKind::BigInt));
    RowSpool spool(types);
    SqliteStatement remove =
        store.Prepare("DELETE FROM " + Prefix() + table_.StorageName() + query_.KeyCondition(1));
    while (rows.Step()) {
        if (sink.Cancelled()) throw Cancelled();
        ReadRow(rows);
        ++count_;
        BindKey(remove, rows, 1);
        remove.Run();
        if (checks_.NeedsRows()) checks_.Updated(before_, row_);
        if (numbered) row_.emplace_back(ReadColumn(rows.Handle(), 0, types.back()));
        spool.Append(row_);
        row_.resize(table_.columns.size());
    }
    SqliteStatement insert = store.Prepare(storage.InsertSql(table_, numbered));
    while (spool.Next(row_)) {
        if (sink.Cancelled()) throw Cancelled();
        for (size_t i = 0; i < types.size(); ++i) {
            if (i < table_.columns.size() && !table_.columns[i].stored) continue;
            insert.Bind(static_cast<int>(i) + 1, row_[i].View(), types[i]);
        }
        try {
            insert.Run();
        } catch (const DuplicateKey& duplicate) {
            insert.Reset();
            checker_.RaiseDuplicate(duplicate.text, row_);
        }
    }
}

void RowUpdater::Run(ResultSink& sink) {
    SessionState& session = frame_.Session();
    SqliteStatement rows = query_.Prepare(frame_, session.store, session.options.rowCount);
    if (moves_) {
        ChangeByMoving(rows, sink);
    } else {
        ChangeInPlace(rows, sink);
    }
    checks_.Finish();
    if (output_) output_->Store(sink);
}

void RowUpdater::SendOutput(ResultSink& sink) {
    if (output_) output_->Send(sink);
}

}  // namespace quarv::localdb::engine
