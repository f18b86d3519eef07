#include "platform/ado/odbc/Column.h"

#include <sqlext.h>

#include <algorithm>
#include <array>
#include <vector>

namespace quarv::ado::odbc {

namespace {

// SQL Server's own types, by the driver's numbers.
constexpr SQLSMALLINT SqlVariant = -150;
constexpr SQLSMALLINT SqlUserDefined = -151;
constexpr SQLSMALLINT SqlXml = -152;
constexpr SQLSMALLINT SqlTime2 = -154;
constexpr SQLSMALLINT SqlTimestampOffset = -155;

// How the width of a type's buffer follows from the column's size.
enum class Width : quint8 { Fixed, Characters, ByteCount, Unbounded };

struct TypeRow {
    SQLSMALLINT sqlType;
    SQLSMALLINT cType;
    CellKind kind;
    Width rule;
    quint32 fixedWidth;
};

// The default C types are never asked for: for some types the driver ends the process over them.
constexpr std::array Types{
    TypeRow{SQL_BIT, SQL_C_SBIGINT, CellKind::Boolean, Width::Fixed, 8},
    TypeRow{SQL_TINYINT, SQL_C_SBIGINT, CellKind::Integer, Width::Fixed, 8},
    TypeRow{SQL_SMALLINT, SQL_C_SBIGINT, CellKind::Integer, Width::Fixed, 8},
    TypeRow{SQL_INTEGER, SQL_C_SBIGINT, CellKind::Integer, Width::Fixed, 8},
    TypeRow{SQL_BIGINT, SQL_C_SBIGINT, CellKind::Integer, Width::Fixed, 8},
    TypeRow{SQL_REAL, SQL_C_FLOAT, CellKind::Single, Width::Fixed, 4},
    TypeRow{SQL_FLOAT, SQL_C_DOUBLE, CellKind::Floating, Width::Fixed, 8},
    TypeRow{SQL_DOUBLE, SQL_C_DOUBLE, CellKind::Floating, Width::Fixed, 8},
    TypeRow{SQL_DECIMAL, SQL_C_CHAR, CellKind::Decimal, Width::Fixed, 64},
    TypeRow{SQL_NUMERIC, SQL_C_CHAR, CellKind::Decimal, Width::Fixed, 64},
    TypeRow{SQL_CHAR, SQL_C_WCHAR, CellKind::Text, Width::Characters, 0},
    TypeRow{SQL_VARCHAR, SQL_C_WCHAR, CellKind::Text, Width::Characters, 0},
    TypeRow{SQL_WCHAR, SQL_C_WCHAR, CellKind::Text, Width::Characters, 0},
    TypeRow{SQL_WVARCHAR, SQL_C_WCHAR, CellKind::Text, Width::Characters, 0},
    TypeRow{SQL_LONGVARCHAR, SQL_C_WCHAR, CellKind::Text, Width::Unbounded, 0},
    TypeRow{SQL_WLONGVARCHAR, SQL_C_WCHAR, CellKind::Text, Width::Unbounded, 0},
    TypeRow{SqlVariant, SQL_C_WCHAR, CellKind::Text, Width::Unbounded, 0},
    TypeRow{SqlXml, SQL_C_WCHAR, CellKind::Xml, Width::Unbounded, 0},
    TypeRow{SQL_GUID, SQL_C_GUID, CellKind::Guid, Width::Fixed, sizeof(SQLGUID)},
    TypeRow{SQL_BINARY, SQL_C_BINARY, CellKind::Bytes, Width::ByteCount, 0},
    TypeRow{SQL_VARBINARY, SQL_C_BINARY, CellKind::Bytes, Width::ByteCount, 0},
    TypeRow{SQL_LONGVARBINARY, SQL_C_BINARY, CellKind::Bytes, Width::Unbounded, 0},
    TypeRow{SqlUserDefined, SQL_C_BINARY, CellKind::Bytes, Width::Unbounded, 0},
    TypeRow{SQL_TYPE_DATE, SQL_C_TYPE_DATE, CellKind::Date, Width::Fixed, sizeof(SQL_DATE_STRUCT)},
    TypeRow{SQL_TYPE_TIME, SQL_C_TYPE_TIME, CellKind::Time, Width::Fixed, sizeof(SQL_TIME_STRUCT)},
    TypeRow{SqlTime2, SQL_C_BINARY, CellKind::TimeExact, Width::Fixed, 12},
    TypeRow{SQL_TYPE_TIMESTAMP, SQL_C_TYPE_TIMESTAMP, CellKind::Timestamp, Width::Fixed,
            sizeof(SQL_TIMESTAMP_STRUCT)},
    TypeRow{SqlTimestampOffset, SQL_C_BINARY, CellKind::TimeOffset, Width::Fixed, 20},
};

// Any type that is not listed is read as text of any length.
constexpr TypeRow OtherType{0, SQL_C_WCHAR, CellKind::Text, Width::Unbounded, 0};

const TypeRow& RowOf(SQLSMALLINT sqlType) {
    const auto found = std::find_if(Types.begin(), Types.end(), [sqlType](const TypeRow& row) {
        return row.sqlType == sqlType;
    });
    return found == Types.end() ? OtherType : *found;
}

qint64 BufferWidth(const TypeRow& row, SQLULEN size) {
    const auto characters = static_cast<qint64>(std::min<SQLULEN>(size, Column::WidestBuffer));
    switch (row.rule) {
        case Width::Fixed:
            return row.fixedWidth;
        case Width::Characters:
            return (characters + 1) * 2;
        case Width::ByteCount:
            return characters;
        case Width::Unbounded:
            break;
    }
    return 0;
}

}  // namespace

bool Column::Describe(SQLHSTMT statement, SQLUSMALLINT number, Column& column) {
    std::array<SQLWCHAR, 256> name{};
    SQLSMALLINT length = 0;
    SQLSMALLINT sqlType = 0;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    SQLRETURN rc = SQLDescribeColW(statement, number, name.data(), name.size(), &length, &sqlType,
                                   &size, &digits, &nullable);
    if (!SQL_SUCCEEDED(rc)) return false;
    const int kept = std::clamp<int>(length, 0, name.size() - 1);
    column.name = QString::fromUtf16(reinterpret_cast<const char16_t*>(name.data()), kept);

    const TypeRow& row = RowOf(sqlType);
    column.kind = row.kind;
    column.cType = row.cType;
    column.fractionDigits = static_cast<quint8>(std::clamp<int>(digits, 0, 7));
    // A size of 0 stands for "(max)".
    const qint64 width = BufferWidth(row, size);
    column.bindable = (row.rule == Width::Fixed || size > 0) && width > 0 && width <= WidestBuffer;
    column.width = column.bindable ? static_cast<quint32>(width) : 0;
    return true;
}

}  // namespace quarv::ado::odbc
