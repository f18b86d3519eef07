#include "localdb/engine/RowInserter.h"

#include <algorithm>

#include "localdb/engine/BoundQuery.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TableStorage.h"
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

void RowInserter::CheckIdentity() const {
    if (!table_.identity) return;
    const SessionOptions& options = frame_.Session().options;
    const bool allowed = options.identityInsertTable == table_.object.id &&
                         options.identityInsertDatabase == metadata_.Database().id;
    const ColumnInfo* identity = table_.FindColumn(table_.identity->columnId);
    const bool given = given_[static_cast<size_t>(identity - table_.columns.data())];
    if (given && !allowed) throw SqlError(544, {table_.object.name});
    if (!given && allowed) throw SqlError(namesGiven_ ? 545 : 8101, {table_.object.name});
}

void RowInserter::CheckCount(size_t given, bool fromQuery) const {
    if (given == targets_.size()) return;
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

void RowInserter::InsertRow(const tsql::ExpressionList& values) {
    std::vector<OwnedValue> row(table_.columns.size());
    std::vector<bool> filled(table_.columns.size(), false);
    if (!values.empty()) {
        CheckCount(values.size(), false);
        const Scope none;
        ExpressionBinder binder(context_, none);
        for (size_t i = 0; i < values.size(); ++i) {
            if (IsDefaultWord(*values[i])) continue;
            const size_t column = targets_[i];
            CheckGiven(column);
            const BoundPtr value =
                RowChecker::ConvertTo(binder.Value(*values[i]), table_.columns[column]);
            row[column] = frame_.Compute(*value);
            filled[column] = true;
        }
    }
    for (size_t i = 0; i < row.size(); ++i) {
        const bool fill =
            !filled[i] && !table_.columns[i].identity && !table_.columns[i].IsComputed();
        if (fill) row[i] = DefaultValue(i);
    }
    Insert(row);
}

// The query's rows are all read before the first is put in, so that a table can be doubled.
void RowInserter::InsertQuery(const tsql::Query& query, ResultSink& sink) {
    QueryBinder binder(context_, nullptr);
    const std::unique_ptr<BoundQuery> bound = binder.Bind(query);
    if (!bound->assigned.empty()) throw SqlError(102, {QStringLiteral("=")}, query.line);
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
    while (rows.Step()) {
        if (sink.Cancelled()) throw Cancelled();
        for (size_t i = 0; i < row.size(); ++i) {
            const ColumnInfo& column = table_.columns[i];
            if (!given_[i] && !column.identity && !column.IsComputed()) row[i] = DefaultValue(i);
        }
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
