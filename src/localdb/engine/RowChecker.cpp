#include "localdb/engine/RowChecker.h"

#include "localdb/engine/Conversion.h"
#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/ParseCache.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/engine/TemporaryTables.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

// As much of a value as `limit` can hold, as messages show it.
QString Shown(const SqlValue& value, size_t limit) {
    if (value.kind == SqlValue::Kind::Text) return FromUtf8(TakeUtf16(value.text, limit));
    return Conversion::ToMessageText(SqlValue::Bytes(value.text.substr(0, limit)),
                                     MakeType(TypeKind::VarBinary, SqlType::Max));
}

}  // namespace

RowChecker::RowChecker(const Metadata& metadata, const TableInfo& table, QString verb)
    : database_(metadata.Database().name), table_(table), verb_(std::move(verb)) {}

// A column takes the whole text or all the bytes, so that their length can be checked.
SqlType RowChecker::AssignmentType(const SqlType& from, const SqlType& to) {
    if (ClassOf(from) != ClassOf(to) || to.length == SqlType::Max) return to;
    if (ClassOf(to) == TypeClass::Text) {
        return MakeType(IsUnicode(to.kind) ? TypeKind::NVarChar : TypeKind::VarChar, SqlType::Max);
    }
    const bool bytes = to.kind == TypeKind::Binary || to.kind == TypeKind::VarBinary;
    return bytes ? MakeType(TypeKind::VarBinary, SqlType::Max) : to;
}

BoundPtr RowChecker::ConvertTo(BoundPtr value, const ColumnInfo& column) {
    const SqlType type = AssignmentType(value->type, column.type);
    return ExpressionBinder::Convert(std::move(value), value->untypedNull ? column.type : type);
}

BoundPtr RowChecker::BindDefault(BindContext& context, const ColumnInfo& column) {
    if (column.defaultText.isEmpty()) {
        return std::make_unique<BoundConstant>(SqlValue(), column.type);
    }
    const Scope none;
    ExpressionBinder binder(context, none);
    return ConvertTo(binder.Value(*context.Parsed().Value(column.defaultText)), column);
}

// A table variable stands in no database.
QString RowChecker::FullName() const {
    if (table_.object.name.startsWith(u'@')) return table_.object.name;
    return database_ + u'.' + table_.object.schema + u'.' + table_.object.name;
}

bool RowChecker::MustFit(const ColumnInfo& column, const SqlValue& value) const {
    const SqlType& type = column.type;
    const bool text = value.kind == SqlValue::Kind::Text;
    if (type.length <= 0 || (!text && value.kind != SqlValue::Kind::Bytes)) return false;
    const auto limit = static_cast<size_t>(type.length);
    const size_t length = text ? Utf16Length(value.text) : value.text.size();
    // Blanks and zeros beyond the end are dropped; anything else would be lost.
    const size_t needed = text ? Utf16Length(WithoutTrailingBlanks(value.text))
                               : value.text.find_last_not_of('\0') + 1;
    if (needed > limit) throw SqlError(2628, {FullName(), column.name, Shown(value, limit)});
    return length > limit || (length < limit && IsFixedLength(type.kind));
}

SqlValue RowChecker::Resize(const ColumnInfo& column, const SqlValue& value, TextArena& arena) {
    const bool text = value.kind == SqlValue::Kind::Text;
    const SqlType whole = MakeType(text ? TypeKind::NVarChar : TypeKind::VarBinary, SqlType::Max);
    return Conversion::Convert(value, whole, column.type, Conversion::NoStyle, arena);
}

void RowChecker::Stamp(Metadata& metadata, const TableInfo& table, std::vector<OwnedValue>& row) {
    for (size_t i = 0; i < table.columns.size(); ++i) {
        const SqlType& type = table.columns[i].type;
        if (type.kind != TypeKind::RowVersion) continue;
        TextArena arena;
        row[i] = Conversion::Convert(SqlValue::Integer(metadata.NextRowVersion()),
                                     MakeType(TypeKind::BigInt), type, Conversion::NoStyle, arena);
    }
}

void RowChecker::RaiseNull(const ColumnInfo& column) const {
    throw SqlError(515, {column.name, FullName(), verb_});
}

void RowChecker::Check(const ColumnInfo& column, OwnedValue& value) const {
    const SqlValue view = value.View();
    if (view.IsNull()) {
        if (!column.nullable) RaiseNull(column);
    } else if (MustFit(column, view)) {
        TextArena arena;
        value = Resize(column, view, arena);
    }
}

SqlValue RowChecker::Fit(const ColumnInfo& column, const SqlValue& value, TextArena& arena) const {
    if (value.IsNull()) {
        if (!column.nullable) RaiseNull(column);
        return value;
    }
    return MustFit(column, value) ? Resize(column, value, arena) : value;
}

void RowChecker::RaiseDuplicate(const std::string& text, const std::vector<OwnedValue>& row) const {
    const IndexInfo* index = TableStorage::FindViolated(table_, text);
    if (!index) throw SqlError(945, {database_});
    QStringList values;
    for (const IndexInfo::Key& key : index->keys) {
        const ColumnInfo* column = table_.FindColumn(key.columnId);
        const auto place = static_cast<size_t>(column - table_.columns.data());
        values += Conversion::ToMessageText(row[place].View(), column->type);
    }
    const QString object =
        table_.object.schema + u'.' + TemporaryTables::WrittenName(table_.object.name);
    const QString list = values.join(QStringLiteral(", "));
    if (index->constraintId == 0) throw SqlError(2601, {object, index->name, list});
    const QString kind =
        index->primary ? QStringLiteral("PRIMARY KEY") : QStringLiteral("UNIQUE KEY");
    throw SqlError(2627, {kind, index->name, object, list});
}

}  // namespace quarv::localdb::engine
