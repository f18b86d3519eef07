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
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/BatchParser.h"

namespace quarv::localdb::engine {

namespace {

bool IsDefaultWord(const tsql::Expression& expression) {
    return expression.kind == tsql::ExpressionKind::Literal &&
           static_cast<const tsql::Literal&>(expression).literal == tsql::LiteralKind::Default;
}

// A text column takes the whole text, so that its length can be checked.
SqlType AssignmentType(const SqlType& from, const SqlType& to) {
    const bool texts = ClassOf(from) == TypeClass::Text && ClassOf(to) == TypeClass::Text;
    return texts ? from : to;
}

}  // namespace

RowInserter::RowInserter(Frame& frame, BindContext& context, Metadata& metadata,
                         const TableInfo& table, const std::vector<QString>& columns)
    : frame_(frame),
      context_(context),
      metadata_(metadata),
      table_(table),
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
        const auto index = static_cast<size_t>(column - table_.columns.data());
        if (given_[index]) throw SqlError(264, {name});
        given_[index] = true;
        targets_.push_back(index);
    }
    for (size_t i = 0; names.empty() && i < table_.columns.size(); ++i) {
        if (table_.columns[i].identity) continue;
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

BoundPtr RowInserter::ConvertTo(BoundPtr value, const ColumnInfo& column) {
    const SqlType type = AssignmentType(value->type, column.type);
    return ExpressionBinder::Convert(std::move(value), value->untypedNull ? column.type : type);
}

BoundPtr RowInserter::BindDefault(const ColumnInfo& column) {
    if (column.defaultText.isEmpty()) {
        return std::make_unique<BoundConstant>(SqlValue(), column.type);
    }
    const Scope none;
    ExpressionBinder binder(context_, none);
    return ConvertTo(binder.Value(*tsql::ParseExpressionText(column.defaultText)), column);
}

OwnedValue RowInserter::DefaultValue(size_t column) {
    if (!defaults_[column]) defaults_[column] = BindDefault(table_.columns[column]);
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
            const BoundPtr value = ConvertTo(binder.Value(*values[i]), table_.columns[column]);
            row[column] = frame_.Compute(*value);
            filled[column] = true;
        }
    }
    for (size_t i = 0; i < row.size(); ++i) {
        const bool fill = !filled[i] && !table_.columns[i].identity;
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
        bound->items[i] = ConvertTo(std::move(bound->items[i]), table_.columns[targets_[i]]);
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
            if (!given_[i] && !table_.columns[i].identity) row[i] = DefaultValue(i);
        }
        for (size_t i = 0; i < targets_.size(); ++i) {
            row[targets_[i]] =
                ReadColumn(rows.Handle(), static_cast<int>(i), bound->items[i]->type);
        }
        Insert(row);
    }
}

void RowInserter::CheckLength(const ColumnInfo& column, OwnedValue& value) const {
    const SqlType& type = column.type;
    const SqlValue view = value.View();
    if (type.length == SqlType::Max || view.kind != SqlValue::Kind::Text) return;
    const auto limit = static_cast<size_t>(type.length);
    const bool unicode = IsUnicode(type.kind);
    const auto length = [unicode](std::string_view text) {
        return unicode ? Utf16Length(text) : text.size();
    };
    // Blanks beyond the end are dropped; anything else would be lost.
    if (length(WithoutTrailingBlanks(view.text)) > limit) {
        const std::string_view cut =
            unicode ? TakeUtf16(view.text, limit) : TakeBytes(view.text, limit);
        throw SqlError(2628, {metadata_.Database().name + u'.' + table_.object.schema + u'.' +
                                  table_.object.name,
                              column.name, FromUtf8(cut)});
    }
    if (length(view.text) == limit && !IsFixedLength(type.kind)) return;
    TextArena arena;
    const SqlType whole = MakeType(TypeKind::NVarChar, SqlType::Max);
    value = Conversion::Convert(view, whole, type, Conversion::NoStyle, arena);
}

void RowInserter::Check(const ColumnInfo& column, OwnedValue& value) const {
    if (value.View().IsNull()) {
        if (column.nullable) return;
        throw SqlError(515, {column.name,
                             metadata_.Database().name + u'.' + table_.object.schema + u'.' +
                                 table_.object.name,
                             QStringLiteral("INSERT")});
    }
    if (ClassOf(column.type) == TypeClass::Text) CheckLength(column, value);
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
        Check(column, row[i]);
        if (column.identity) TakeIdentity(row[i]);
        insert_.Bind(static_cast<int>(i) + 1, row[i].View(), column.type);
    }
    try {
        insert_.Run();
    } catch (const DuplicateKey& duplicate) {
        insert_.Reset();
        RaiseDuplicate(duplicate.text, row);
    }
    ++count_;
}

void RowInserter::RaiseDuplicate(const std::string& text,
                                 const std::vector<OwnedValue>& row) const {
    const IndexInfo* index = TableStorage::FindViolated(table_, text);
    if (!index) throw SqlError(945, {metadata_.Database().name});
    QStringList values;
    for (const IndexInfo::Key& key : index->keys) {
        const ColumnInfo* column = table_.FindColumn(key.columnId);
        const auto place = static_cast<size_t>(column - table_.columns.data());
        values += Conversion::ToMessageText(row[place].View(), column->type);
    }
    const QString object = table_.object.schema + u'.' + table_.object.name;
    const QString list = values.join(QStringLiteral(", "));
    if (index->constraintId == 0) throw SqlError(2601, {object, index->name, list});
    const QString kind =
        index->primary ? QStringLiteral("PRIMARY KEY") : QStringLiteral("UNIQUE KEY");
    throw SqlError(2627, {kind, index->name, object, list});
}

void RowInserter::Finish() {
    if (identityChanged_) metadata_.SetLastIdentity(table_.object.id, *lastIdentity_);
}

}  // namespace quarv::localdb::engine
