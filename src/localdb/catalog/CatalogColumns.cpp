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

Column NChar(const char* name, int length, bool nullable) {
    return Make(name, MakeType(TypeKind::NChar, length), nullable);
}

Column Char(const char* name, int length, bool nullable) {
    return Make(name, MakeType(TypeKind::Char, length), nullable);
}

Column Int(const char* name, bool nullable) {
    return Make(name, engine::IntType(), nullable);
}

Column BigInt(const char* name, bool nullable) {
    return Make(name, MakeType(TypeKind::BigInt), nullable);
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

Column Binary(const char* name, int length, bool nullable) {
    return Make(name, MakeType(TypeKind::Binary, length), nullable);
}

Column Image(const char* name, bool nullable) {
    return Make(name, MakeType(TypeKind::Image, SqlType::Max), nullable);
}

Column VarBinary(const char* name, int length, bool nullable) {
    return Make(name, MakeType(TypeKind::VarBinary, length), nullable);
}

Column Guid(const char* name, bool nullable) {
    return Make(name, MakeType(TypeKind::UniqueIdentifier), nullable);
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

const char* const PrecisionOfType =
    "CASE q_type_number(c.type) WHEN 104 THEN 1"
    " ELSE coalesce(q_precision(c.type), q_moment_digits(c.type), 0) END";
const char* const ScaleOfType = "coalesce(q_scale(c.type), q_moment_scale(c.type), 0)";

// The numbers of the time before sys.types, which newer types do not have.
std::string OldTypeNumber(const std::string& number, const std::string& userNumber) {
    return "CASE " + userNumber +
           " WHEN 34 THEN 20 WHEN 35 THEN 19 WHEN 48 THEN 5 WHEN 52 THEN 6 WHEN 56 THEN 7"
           " WHEN 58 THEN 22 WHEN 59 THEN 23 WHEN 60 THEN 11 WHEN 61 THEN 12 WHEN 62 THEN 8"
           " WHEN 104 THEN 16 WHEN 106 THEN 24 WHEN 108 THEN 10 WHEN 122 THEN 21"
           " WHEN 165 THEN 4 WHEN 167 THEN 2 WHEN 173 THEN 3 WHEN 175 THEN 1 WHEN 189 THEN 80"
           " WHEN 256 THEN 18 ELSE CASE WHEN " +
           userNumber + " = " + number + " THEN 0 ELSE " + userNumber + " END END";
}

// What the type was on the wire where it may be null or not.
std::string OldWireNumber(const std::string& number) {
    return "CASE " + number +
           " WHEN 36 THEN 37 WHEN 99 THEN 35 WHEN 104 THEN 50 WHEN 106 THEN 55 WHEN 108 THEN 63"
           " WHEN 127 THEN 63 WHEN 165 THEN 37 WHEN 167 THEN 39 WHEN 173 THEN 45 WHEN 175 THEN 47"
           " WHEN 189 THEN 45 WHEN 231 THEN 39 WHEN 239 THEN 47"
           " WHEN 40 THEN 0 WHEN 41 THEN 0 WHEN 42 THEN 0 WHEN 43 THEN 0 WHEN 241 THEN 0 ELSE " +
           number + " END";
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
