#include "localdb/engine/RowChecker.h"

#include "localdb/engine/Conversion.h"
#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/engine/TemporaryTables.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/BatchParser.h"

namespace quarv::localdb::engine {

namespace {

// A text column takes the whole text, so that its length can be checked.
SqlType AssignmentType(const SqlType& from, const SqlType& to) {
    const bool texts = ClassOf(from) == TypeClass::Text && ClassOf(to) == TypeClass::Text;
    return texts ? from : to;
}

}  // namespace

RowChecker::RowChecker(const Metadata& metadata, const TableInfo& table, QString verb)
    : database_(metadata.Database().name), table_(table), verb_(std::move(verb)) {}

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
    return ConvertTo(binder.Value(*tsql::ParseExpressionText(column.defaultText)), column);
}

// A table variable stands in no database.
QString RowChecker::FullName() const {
    if (table_.object.name.startsWith(u'@')) return table_.object.name;
    return database_ + u'.' + table_.object.schema + u'.' + table_.object.name;
}

void RowChecker::CheckLength(const ColumnInfo& column, OwnedValue& value) const {
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
        throw SqlError(2628, {FullName(), column.name, FromUtf8(cut)});
    }
    if (length(view.text) == limit && !IsFixedLength(type.kind)) return;
    TextArena arena;
    const SqlType whole = MakeType(TypeKind::NVarChar, SqlType::Max);
    value = Conversion::Convert(view, whole, type, Conversion::NoStyle, arena);
}

void RowChecker::Check(const ColumnInfo& column, OwnedValue& value) const {
    if (value.View().IsNull()) {
        if (column.nullable) return;
        throw SqlError(515, {column.name, FullName(), verb_});
    }
    if (ClassOf(column.type) == TypeClass::Text) CheckLength(column, value);
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
