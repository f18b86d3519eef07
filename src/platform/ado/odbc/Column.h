// Column: one column of a result as the driver describes it, and how its values are fetched: the C
// type that loses nothing, and the width of its buffer.
#pragma once

#include <sql.h>

#include <QString>

namespace quarv::ado::odbc {

// What a fetched value's bytes mean.
enum class CellKind : quint8 {
    Boolean,   // qint64, 0 or 1
    Integer,   // qint64
    Single,    // float
    Floating,  // double
    Decimal,   // ASCII digits
    Text,      // UTF-16
    Xml,       // UTF-16, perhaps with a byte order mark
    Guid,      // SQLGUID
    Bytes,
    Date,        // SQL_DATE_STRUCT
    Time,        // SQL_TIME_STRUCT
    TimeExact,   // 12 bytes: hour, minute, second (u16 each), 2 unused, nanoseconds (u32)
    Timestamp,   // SQL_TIMESTAMP_STRUCT
    TimeOffset,  // 20 bytes: SQL_TIMESTAMP_STRUCT of the local time, offset hours, minutes (i16)
};

struct Column {
    // No bound buffer is wider; longer values are read piece by piece.
    static constexpr qint64 WidestBuffer = 16002;

    QString name;
    CellKind kind = CellKind::Text;
    SQLSMALLINT cType = 0;
    quint8 fractionDigits = 0;  // of times
    bool bindable = false;      // bounded in width
    quint32 width = 0;          // bytes of its buffer, a text's end mark included

    // Describes column `number` (1-based) of the statement's current result. False where the driver
    // fails, with its diagnostics on the statement.
    static bool Describe(SQLHSTMT statement, SQLUSMALLINT number, Column& column);
};

}  // namespace quarv::ado::odbc
