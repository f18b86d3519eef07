#include "localdb/catalog/OdbcTypes.h"

#include <algorithm>
#include <array>

#include "localdb/catalog/CatalogColumns.h"

namespace quarv::localdb::catalog {

namespace {

using K = engine::TypeKind;

constexpr std::array<OdbcType, 25> Types = {{
    {K::Bit, -7, -7, 0, -7, 0, 1, 1, -1, 50, 50},
    {K::TinyInt, -6, -6, 0, -6, 0, 3, 1, 0, 48, 38},
    {K::SmallInt, 5, 5, 0, 5, 0, 5, 2, 0, 52, 38},
    {K::Int, 4, 4, 0, 4, 0, 10, 4, 0, 56, 38},
    {K::BigInt, -5, -5, 0, -5, 0, 19, 8, 0, 63, 108},
    {K::Real, 7, 7, 0, 7, 0, 7, 4, -1, 59, 109},
    {K::Float, 6, 6, 0, 6, 0, 15, 8, -1, 62, 109},
    {K::SmallMoney, 3, 3, 0, 3, 0, 10, 12, 4, 122, 110},
    {K::Money, 3, 3, 0, 3, 0, 19, 21, 4, 60, 110},
    {K::Decimal, 3, 3, 0, 3, 0, 0, 0, -1, 106, 106},
    {K::Numeric, 2, 2, 0, 2, 0, 0, 0, -1, 108, 108},
    {K::Char, 1, 1, 0, 1, 0, 0, 0, -1, 47, 39},
    {K::VarChar, 12, 12, -1, 12, 0, 0, 0, -1, 39, 39},
    {K::NChar, -8, -8, 0, -8, 0, 0, 0, -1, 47, 39},
    {K::NVarChar, -9, -9, -10, -9, 0, 0, 0, -1, 39, 39},
    {K::Text, -1, -1, 0, -1, 0, 2147483647, 2147483647, -1, 35, 35},
    {K::NText, -10, -10, 0, -10, 0, 1073741823, 2147483646, -1, 35, 35},
    {K::Binary, -2, -2, 0, -2, 0, 0, 0, -1, 45, 37},
    {K::VarBinary, -3, -3, -4, -3, 0, 0, 0, -1, 37, 37},
    {K::Image, -4, -4, 0, -4, 0, 2147483647, 2147483647, -1, 34, 34},
    {K::UniqueIdentifier, -11, -11, 0, -11, 0, 36, 16, -1, 37, 37},
    {K::RowVersion, -2, -2, 0, -2, 0, 8, 8, -1, 45, 37},
    {K::Xml, -152, -152, -152, -152, 0, 1073741823, 2147483646, -1, 0, 0},
    {K::SmallDateTime, 11, 93, 0, 9, 3, 16, 16, 0, 58, 111},
    {K::DateTime, 11, 93, 0, 9, 3, 23, 16, 3, 61, 111},
}};

// These are younger than ODBC 2, to which they are text.
constexpr std::array<OdbcType, 4> YoungTypes = {{
    {K::Time, -9, -154, 0, -154, 0, 0, 12, -1, 0, 0},
    {K::DateTime2, -9, 93, 0, 9, 3, 0, 16, -1, 0, 0},
    {K::DateTimeOffset, -9, -155, 0, -155, 0, 0, 20, -1, 0, 0},
    {K::Date, -9, 91, 0, 9, 1, 10, 6, -1, 0, 0},
}};

constexpr auto Both() {
    std::array<OdbcType, Types.size() + YoungTypes.size()> all{};
    std::copy(Types.begin(), Types.end(), all.begin());
    std::copy(YoungTypes.begin(), YoungTypes.end(), all.begin() + Types.size());
    return all;
}
constexpr auto Table = Both();

std::string Number(int number, bool present) {
    return present ? std::to_string(number) : "NULL";
}

}  // namespace

const char* const OdbcTypes::DataType =
    "CASE q_char_length(c.type) WHEN -1 THEN m.long_code ELSE m.code END";
const char* const OdbcTypes::Precision =
    "CASE q_char_length(c.type) WHEN -1 THEN 2147483647 / m.unit"
    " ELSE coalesce(m.size, q_precision(c.type), q_char_length(c.type), q_moment_digits(c.type))"
    " END";
const char* const OdbcTypes::Length =
    "CASE q_char_length(c.type) WHEN -1 THEN 2147483647 / m.unit * m.unit"
    " ELSE coalesce(m.bytes, q_precision(c.type) + 2, q_octet_length(c.type)) END";
const char* const OdbcTypes::Scale =
    "coalesce(m.scale, q_scale(c.type), CASE WHEN q_type_number(c.type) IN (41, 42, 43)"
    " THEN q_moment_scale(c.type) END)";

std::span<const OdbcType> OdbcTypes::All() {
    return Table;
}

std::string OdbcTypes::Relation(int64_t odbcVersion) {
    std::string sql =
        "WITH m(number, code, long_code, sql_type, sub, size, bytes, scale, unit, wire, wire_n)"
        " AS (VALUES ";
    const char* separator = "";
    for (const OdbcType& type : Table) {
        sql += separator;
        separator = ", ";
        sql += '(' + std::to_string(engine::FactsOf(type.kind).number) + ", " +
               std::to_string(type.Code(odbcVersion)) + ", " + std::to_string(type.longCode) +
               ", " + std::to_string(type.sqlType) + ", " +
               Number(type.subcode, type.subcode != 0) + ", " +
               Number(type.precision, type.precision != 0) + ", " +
               Number(type.length, type.length != 0) + ", " + Number(type.scale, type.scale >= 0) +
               ", " + (engine::IsUnicode(type.kind) ? "2" : "1") + ", " +
               std::to_string(type.wireType) + ", " + std::to_string(type.wireTypeN) + ')';
    }
    return sql + ") ";
}

void OdbcTypes::AddColumns(std::vector<engine::Column>& columns) {
    const std::vector<Column> typed = {SmallInt("DATA_TYPE", false),
                                       Sysname("TYPE_NAME", false),
                                       Int("PRECISION"),
                                       Int("LENGTH"),
                                       SmallInt("SCALE"),
                                       SmallInt("RADIX"),
                                       SmallInt("NULLABLE", false),
                                       VarChar("REMARKS", 254),
                                       NVarChar("COLUMN_DEF", 4000),
                                       SmallInt("SQL_DATA_TYPE", false),
                                       SmallInt("SQL_DATETIME_SUB"),
                                       Int("CHAR_OCTET_LENGTH"),
                                       Int("ORDINAL_POSITION", false),
                                       VarChar("IS_NULLABLE", 254),
                                       TinyInt("SS_DATA_TYPE")};
    columns.insert(columns.end(), typed.begin(), typed.end());
}

std::string OdbcTypes::Expressions(const Source& source) {
    return std::string(DataType) + ", " + source.typeName + ", " + Precision + ", " + Length +
           ", " + Scale +
           ", CASE WHEN q_radix(c.type) IS NOT NULL THEN 10 END, c.nullable, NULL, " +
           source.defaultText +
           ", CASE q_char_length(c.type) WHEN -1 THEN m.long_code ELSE m.sql_type END, m.sub,"
           " CASE q_char_length(c.type) WHEN -1 THEN 2147483647 / m.unit * m.unit"
           " ELSE q_octet_length(c.type) END, " +
           source.ordinal +
           ", CASE c.nullable WHEN 0 THEN 'NO' ELSE 'YES' END,"
           " CASE c.nullable WHEN 0 THEN m.wire ELSE m.wire_n END";
}

}  // namespace quarv::localdb::catalog
