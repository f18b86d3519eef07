#include "platform/ado/odbc/Cell.h"

#include <sqlext.h>

#include <array>
#include <cstring>

namespace quarv::ado::odbc {

namespace {

template <class T>
bool Load(const Cell& cell, T& value) {
    if (cell.length < static_cast<qint64>(sizeof(T))) return false;
    std::memcpy(&value, cell.data, sizeof(T));
    return true;
}

template <class T>
Value Number(const Cell& cell) {
    T value{};
    return Load(cell, value) ? Value(value) : Value::Null();
}

Value Boolean(const Cell& cell) {
    qint64 value = 0;
    return Load(cell, value) ? Value(value != 0) : Value::Null();
}

// Digits are widened on the stack: one decimal a cell must not cost a string.
Value DecimalNumber(const Cell& cell) {
    std::array<char16_t, 64> digits;
    const auto count = static_cast<std::size_t>(cell.length);
    if (count < digits.size()) {
        for (std::size_t i = 0; i < count; ++i)
            digits[i] = static_cast<unsigned char>(cell.data[i]);
        if (const auto decimal = Decimal::Parse(QStringView(digits.data(), cell.length)))
            return Value(*decimal);
    }
    return Value(QString::fromLatin1(cell.data, cell.length));
}

Value Text(const Cell& cell, bool withoutMark) {
    QString text(cell.length / 2, Qt::Uninitialized);
    if (!text.isEmpty())
        std::memcpy(text.data(), cell.data, static_cast<std::size_t>(text.size()) * 2);
    if (withoutMark && text.startsWith(QChar(0xFEFF))) text.remove(0, 1);
    return Value(std::move(text));
}

Value Checked(const DateTime& value) {
    return value.IsValid() ? Value(value) : Value::Null();
}

template <class T>
quint8 Narrow(T value) {
    return static_cast<quint8>(value);
}

template <class T>
void SetDate(DateTime& value, const T& raw) {
    value.year = raw.year;
    value.month = Narrow(raw.month);
    value.day = Narrow(raw.day);
}

template <class T>
void SetTime(DateTime& value, const T& raw) {
    value.hour = Narrow(raw.hour);
    value.minute = Narrow(raw.minute);
    value.second = Narrow(raw.second);
}

void SetFraction(DateTime& value, quint32 nanoseconds, quint8 digits) {
    value.fraction = nanoseconds / 100;
    value.fractionDigits = digits;
}

void SetTimestamp(DateTime& value, const SQL_TIMESTAMP_STRUCT& raw, quint8 digits) {
    SetDate(value, raw);
    SetTime(value, raw);
    SetFraction(value, raw.fraction, digits);  // the driver counts nanoseconds
}

Value Date(const Cell& cell) {
    SQL_DATE_STRUCT raw{};
    if (!Load(cell, raw)) return Value::Null();
    DateTime value;
    value.kind = DateTime::Kind::Date;
    SetDate(value, raw);
    return Checked(value);
}

Value Time(const Cell& cell) {
    SQL_TIME_STRUCT raw{};
    if (!Load(cell, raw)) return Value::Null();
    DateTime value;
    value.kind = DateTime::Kind::Time;
    SetTime(value, raw);
    return Checked(value);
}

struct ExactTime {
    quint16 hour, minute, second, unused;
    quint32 nanoseconds;
};

Value TimeExact(const Column& column, const Cell& cell) {
    ExactTime raw{};
    if (!Load(cell, raw)) return Value::Null();
    DateTime value;
    value.kind = DateTime::Kind::Time;
    SetTime(value, raw);
    SetFraction(value, raw.nanoseconds, column.fractionDigits);
    return Checked(value);
}

Value Timestamp(const Column& column, const Cell& cell) {
    SQL_TIMESTAMP_STRUCT raw{};
    if (!Load(cell, raw)) return Value::Null();
    DateTime value;
    SetTimestamp(value, raw, column.fractionDigits);
    return Checked(value);
}

struct TimestampOffset {
    SQL_TIMESTAMP_STRUCT local;
    qint16 hours, minutes;
};

Value TimeOffset(const Column& column, const Cell& cell) {
    TimestampOffset raw{};
    if (!Load(cell, raw)) return Value::Null();
    DateTime value;
    value.kind = DateTime::Kind::DateTimeOffset;
    SetTimestamp(value, raw.local, column.fractionDigits);
    value.offsetMinutes = static_cast<qint16>(raw.hours * 60 + raw.minutes);
    return Checked(value);
}

}  // namespace

Value ToValue(const Column& column, const Cell& cell) {
    if (cell.IsNull()) return Value::Null();
    switch (column.kind) {
        case CellKind::Boolean:
            return Boolean(cell);
        case CellKind::Integer:
            return Number<qint64>(cell);
        case CellKind::Single:
            return Number<float>(cell);
        case CellKind::Floating:
            return Number<double>(cell);
        case CellKind::Decimal:
            return DecimalNumber(cell);
        case CellKind::Text:
            return Text(cell, false);
        case CellKind::Xml:
            return Text(cell, true);
        case CellKind::Guid:
            return Value(QString::fromLatin1(cell.data, cell.length));
        case CellKind::Bytes:
            return Value(QByteArray(cell.data, cell.length));
        case CellKind::Date:
            return Date(cell);
        case CellKind::Time:
            return Time(cell);
        case CellKind::TimeExact:
            return TimeExact(column, cell);
        case CellKind::Timestamp:
            return Timestamp(column, cell);
        case CellKind::TimeOffset:
            return TimeOffset(column, cell);
    }
    return Value::Null();
}

}  // namespace quarv::ado::odbc
