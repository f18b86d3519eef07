#include "localdb/engine/RowInserter.h"

#include <algorithm>

#include "localdb/engine/BoundQuery.h"
#include "localdb/engine/ChangedSource.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/OutputRows.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/RowSpool.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

bool IsDefaultWord(const tsql::Expression& expression) {
    return expression.kind == tsql::ExpressionKind::Literal &&
           static_cast<const tsql::Literal&>(expression).literal == tsql::LiteralKind::Default;
}

}  // namespace

RowInserter::RowInserter(Frame& frame, BindContext& context, Metadata& metadata,
                         const TableInfo& table, const std::vector<QString>& columns)
    : frame_(frame),
      context_(context),
      metadata_(metadata),
      table_(table),
      checker_(metadata, table, QStringLiteral("INSERT")),
      checks_(frame, metadata, table, QStringLiteral("INSERT")),
      namesGiven_(!columns.empty()),
      defaults_(table.columns.size()),
      given_(table.columns.size(), false) {
    FindColumns(columns);
    CheckIdentity();
    Store& store = frame.Session().store;
    insert_ = store.Prepare(TableStorage(store, metadata).InsertSql(table));
    if (table.identity) lastIdentity_ = table.identity->last;
}

void RowInserter::FindColumns(const std::vector<QString>& names) {
    for (const QString& name : names) {
        const ColumnInfo* column = table_.FindColumn(name);
        if (!column) throw SqlError(207, {name});
        if (column->IsComputed()) throw SqlError(271, {column->name});
        const auto index = static_cast<size_t>(column - table_.columns.data());
        if (given_[index]) throw SqlError(264, {name});
        given_[index] = true;
        targets_.push_back(index);
    }
    for (size_t i = 0; names.empty() && i < table_.columns.size(); ++i) {
        if (table_.columns[i].identity || table_.columns[i].IsComputed()) continue;
        given_[i] = true;
        targets_.push_back(i);
    }
}

size_t RowInserter::IdentityPlace() const {
    const ColumnInfo* identity = table_.FindColumn(table_.identity->columnId);
    return static_cast<size_t>(identity - table_.columns.data());
}

void RowInserter::CheckIdentity() const {
    if (!table_.identity) return;
    const SessionOptions& options = frame_.Session().options;
    const bool allowed = options.identityInsertTable == table_.object.id &&
                         options.identityInsertDatabase == metadata_.Database().id;
    const bool given = given_[IdentityPlace()];
    if (given && !allowed) throw SqlError(544, {table_.object.name});
    if (!given && allowed) throw SqlError(namesGiven_ ? 545 : 8101, {table_.object.name});
}

void RowInserter::CheckCount(size_t given, bool fromQuery) const {
    if (given == targets_.size()) return;
    // One more than there is room for can only be meant for the identity column.
    const bool identity = table_.identity && !given_[IdentityPlace()];
    if (!namesGiven_ && identity && given == targets_.size() + 1) {
        throw SqlError(8101, {table_.object.name});
    }
    if (!namesGiven_) throw SqlError(213);
    if (fromQuery) throw SqlError(given < targets_.size() ? 120 : 121);
    throw SqlError(given < targets_.size() ? 109 : 110);
}

// A rowversion is never given.
void RowInserter::CheckGiven(size_t column) const {
    if (table_.columns[column].type.kind == TypeKind::RowVersion) throw SqlError(273);
}

OwnedValue RowInserter::DefaultValue(size_t column) {
    if (!defaults_[column]) {
        defaults_[column] = RowChecker::BindDefault(context_, table_.columns[column]);
    }
    return frame_.Compute(*defaults_[column]);
}

void RowInserter::FillRest(std::vector<OwnedValue>& row) {
    for (size_t i = 0; i < row.size(); ++i) {
        const ColumnInfo& column = table_.columns[i];
        if (!given_[i] && !column.identity && !column.IsComputed()) row[i] = DefaultValue(i);
    }
}

void RowInserter::InsertDefaults() {
    std::vector<OwnedValue> row(table_.columns.size());
    for (size_t i = 0; i < row.size(); ++i) {
        const ColumnInfo& column = table_.columns[i];
        if (!column.identity && !column.IsComputed()) row[i] = DefaultValue(i);
    }
    if (!IsFull()) Insert(row);
}

std::optional<SqlType> RowInserter::CommonType(const std::vector<std::vector<BoundPtr>>& rows,
                                               size_t column) {
    std::optional<SqlType> common;
    for (const std::vector<BoundPtr>& row : rows) {
        if (!row[column] || row[column]->untypedNull) continue;
        const SqlType& type = row[column]->type;
        common = common ? TypeRules::Common(*common, type) : type;
    }
    return common;
}

void RowInserter::InsertRows(const std::vector<tsql::ExpressionList>& rows, ResultSink& sink) {
    const Scope none;
    ExpressionBinder binder(context_, none);
    std::vector<std::vector<BoundPtr>> bound;
    for (const tsql::ExpressionList& row : rows) {
        CheckCount(row.size(), false);
        bound.emplace_back(row.size());
        for (size_t i = 0; i < row.size(); ++i) {
            if (IsDefaultWord(*row[i])) continue;
            CheckGiven(targets_[i]);
            bound.back()[i] = binder.Value(*row[i]);
        }
    }
    for (size_t i = 0; i < targets_.size(); ++i) {
        const std::optional<SqlType> common = CommonType(bound, i);
        for (std::vector<BoundPtr>& row : bound) {
            if (!row[i]) continue;
            if (common) row[i] = ExpressionBinder::Convert(std::move(row[i]), *common);
            row[i] = RowChecker::ConvertTo(std::move(row[i]), table_.columns[targets_[i]]);
        }
    }
    for (std::vector<BoundPtr>& row : bound) {
        if (sink.Cancelled()) throw Cancelled();
        if (!IsFull()) InsertBound(row);
    }
}

// A value that is missing is the column's default.
void RowInserter::InsertBound(std::vector<BoundPtr>& values) {
    std::vector<OwnedValue> row(table_.columns.size());
    FillRest(row);
    for (size_t i = 0; i < values.size(); ++i) {
        row[targets_[i]] = values[i] ? frame_.Compute(*values[i]) : DefaultValue(targets_[i]);
    }
    Insert(row);
}

void RowInserter::InsertSpool(RowSpool& rows, ResultSink& sink) {
    const std::vector<SqlType>& types = rows.Types();
    CheckCount(types.size(), true);
    std::vector<SqlType> wanted;
    for (size_t i = 0; i < types.size(); ++i) {
        const SqlType& column = table_.columns[targets_[i]].type;
        CheckGiven(targets_[i]);
        TypeRules::CheckConversion(types[i], column, false);
        wanted.push_back(RowChecker::AssignmentType(types[i], column));
    }
    std::vector<OwnedValue> values;
    std::vector<OwnedValue> row(table_.columns.size());
    TextArena arena;
    while (!IsFull() && rows.Next(values)) {
        if (sink.Cancelled()) throw Cancelled();
        FillRest(row);
        for (size_t i = 0; i < types.size(); ++i) {
            row[targets_[i]] = Conversion::Convert(values[i].View(), types[i], wanted[i],
                                                   Conversion::NoStyle, arena);
        }
        arena.Reset();
        Insert(row);
    }
}

// The query's rows are all read before the first is put in, so that a table can be doubled.
void RowInserter::InsertQuery(const tsql::Query& query, ResultSink& sink) {
    QueryBinder binder(context_, nullptr);
    const std::unique_ptr<BoundQuery> bound = binder.Bind(query);
    if (!bound->assigned.empty()) throw SqlError(102, {QStringLiteral("=")}, query.line);
    if (query.into) throw SqlError(156, {QStringLiteral("into")}, query.into->line);
    CheckCount(bound->items.size(), true);
    for (size_t i = 0; i < bound->items.size(); ++i) {
        CheckGiven(targets_[i]);
        bound->items[i] =
            RowChecker::ConvertTo(std::move(bound->items[i]), table_.columns[targets_[i]]);
    }
    SqlWriter writer(frame_);
    writer.Text("WITH m AS MATERIALIZED (");
    bound->Write(writer);
    writer.Text(") SELECT * FROM m");
    SqliteStatement rows = writer.Prepare(frame_.Session().store);
    std::vector<OwnedValue> row(table_.columns.size());
    while (!IsFull() && rows.Step()) {
        if (sink.Cancelled()) throw Cancelled();
        FillRest(row);
        for (size_t i = 0; i < targets_.size(); ++i) {
            row[targets_[i]] =
                ReadColumn(rows.Handle(), static_cast<int>(i), bound->items[i]->type);
        }
        Insert(row);
    }
}

void RowInserter::TakeIdentity(const OwnedValue& value) {
    const SqlValue view = value.View();
    const int64_t number =
        view.kind == SqlValue::Kind::Wide ? static_cast<int64_t>(view.wide) : view.integer;
    const IdentityInfo& identity = *table_.identity;
    const bool beyond = !lastIdentity_ || (identity.increment > 0 ? number > *lastIdentity_
                                                                  : number < *lastIdentity_);
    if (beyond) lastIdentity_ = number;
    identityChanged_ = true;
    frame_.Session().identity = number;
    frame_.scopeIdentity = number;
}

void RowInserter::Insert(std::vector<OwnedValue>& row) {
    RowChecker::Stamp(metadata_, table_, row);
    for (size_t i = 0; i < row.size(); ++i) {
        const ColumnInfo& column = table_.columns[i];
        if (column.identity && !given_[i]) {
            const IdentityInfo& identity = *table_.identity;
            const int64_t next =
                lastIdentity_ ? *lastIdentity_ + identity.increment : identity.seed;
            TextArena arena;
            row[i] = Conversion::Convert(SqlValue::Integer(next), MakeType(TypeKind::BigInt),
                                         column.type, Conversion::NoStyle, arena);
        }
        if (column.IsComputed()) continue;
        checker_.Check(column, row[i]);
        if (column.identity) TakeIdentity(row[i]);
    }
    checks_.Complete(row);
    checks_.Check(row);
    if (view_) view_->Check(row, frame_);
    for (size_t i = 0; i < row.size(); ++i) {
        const ColumnInfo& column = table_.columns[i];
        if (!column.stored) continue;
        if (column.IsComputed()) checker_.Check(column, row[i]);
        insert_.Bind(static_cast<int>(i) + 1, row[i].View(), column.type);
    }
    try {
        insert_.Run();
    } catch (const DuplicateKey& duplicate) {
        insert_.Reset();
        checker_.RaiseDuplicate(duplicate.text, row);
    }
    checks_.Inserted(row);
    ++count_;
    if (output_) output_->Add(&row, nullptr);
}

std::optional<IdentityInfo> RowInserter::Identity() const {
    std::optional<IdentityInfo> identity = table_.identity;
    if (identity) identity->last = lastIdentity_;
    return identity;
}

void RowInserter::Finish() {
    checks_.Finish();
    if (identityChanged_) metadata_.SetLastIdentity(table_.object.id, *lastIdentity_);
}

}  // namespace quarv::localdb::engine
