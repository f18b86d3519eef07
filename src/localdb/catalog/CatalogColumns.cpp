#include "localdb/catalog/CatalogColumns.h"

#include "localdb/engine/Collation.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::catalog {

using engine::MakeType;
using engine::SqlType;
using engine::SqlValue;
using engine::TypeKind;

namespace {

Column Make(const char* name, const SqlType& type, bool nullable) {
    return {QString::fromLatin1(name), type, nullable, false, true};
}

}  // namespace

Column Sysname(const char* name, bool nullable) {
    return Make(name, engine::SysnameType(), nullable);
}

Column NVarChar(const char* name, int length, bool nullable) {
    return Make(name, MakeType(TypeKind::NVarChar, length), nullable);
}

Column VarChar(const char* name, int length, bool nullable) {
    return Make(name, MakeType(TypeKind::VarChar, length), nullable);
}

Column Char(const char* name, int length, bool nullable) {
    return Make(name, MakeType(TypeKind::Char, length), nullable);
}

Column Int(const char* name, bool nullable) {
    return Make(name, engine::IntType(), nullable);
}

Column SmallInt(const char* name, bool nullable) {
    return Make(name, MakeType(TypeKind::SmallInt), nullable);
}

Column TinyInt(const char* name, bool nullable) {
    return Make(name, MakeType(TypeKind::TinyInt), nullable);
}

Column DateTime(const char* name, bool nullable) {
    return Make(name, MakeType(TypeKind::DateTime), nullable);
}

Column Bit(const char* name, bool nullable) {
    return Make(name, engine::BitType(), nullable);
}

Column Numeric38(const char* name, bool nullable) {
    return Make(name, MakeType(TypeKind::Numeric, 0, 38, 0), nullable);
}

engine::SystemParameter Optional(const Column& column) {
    return {column.name, column.type, false};
}

engine::SystemParameter Required(const Column& column) {
    return {column.name, column.type, true};
}

const std::string& CollationOfType() {
    static const std::string sql =
        "CASE WHEN q_type_number(c.type) IN (35, 99, 167, 175, 231, 239) THEN '" +
        std::string(engine::Collation::Name) + "' END";
    return sql;
}

OwnedValue Value(const QString& text) {
    if (text.isNull()) return {};
    const std::string bytes = engine::ToUtf8(text);
    return OwnedValue(SqlValue::Text(bytes));
}

OwnedValue Value(int64_t number) {
    return OwnedValue(SqlValue::Integer(number));
}

OwnedValue WideValue(int64_t number) {
    return OwnedValue(SqlValue::Wide(number));
}

OwnedValue Null() {
    return {};
}

}  // namespace quarv::localdb::catalog
