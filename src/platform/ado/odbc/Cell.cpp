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

// The value last appended.
class ValueMaker final : public CellSink {
  public:
    Value Take() { return std::move(value_); }

    void AppendEmpty() override { value_ = Value(); }
    void AppendNull() override { value_ = Value::Null(); }
    void AppendBoolean(bool value) override { value_ = value; }
    void AppendInteger(qint64 value) override { value_ = value; }
    void AppendSingle(float value) override { value_ = value; }
    void AppendFloating(double value) override { value_ = value; }
    void AppendDecimal(const Decimal& value) override { value_ = value; }
    void AppendText(QStringView value) override { value_ = value.toString(); }
    void AppendDateTime(const DateTime& value) override { value_ = value; }
    void AppendBytes(QByteArrayView value) override { value_ = value.toByteArray(); }

  private:
    Value value_;
};

void WriteBoolean(const Cell& cell, CellSink& sink) {
    qint64 value = 0;
    Load(cell, value) ? sink.AppendBoolean(value != 0) : sink.AppendNull();
}

void WriteInteger(const Cell& cell, CellSink& sink) {
    qint64 value = 0;
    Load(cell, value) ? sink.AppendInteger(value) : sink.AppendNull();
}

void WriteSingle(const Cell& cell, CellSink& sink) {
    float value = 0;
    Load(cell, value) ? sink.AppendSingle(value) : sink.AppendNull();
}

void WriteFloating(const Cell& cell, CellSink& sink) {
    double value = 0;
    Load(cell, value) ? sink.AppendFloating(value) : sink.AppendNull();
}

// Digits are widened on the stack: one decimal a cell must not cost a string.
void WriteDecimal(const Cell& cell, CellSink& sink) {
    std::array<char16_t, 64> digits;
    const auto count = static_cast<std::size_t>(cell.length);
    if (count < digits.size()) {
        for (std::size_t i = 0; i < count; ++i)
            digits[i] = static_cast<unsigned char>(cell.data[i]);
        if (const auto decimal = Decimal::Parse(QStringView(digits.data(), cell.length)))
            return sink.AppendDecimal(*decimal);
    }
    sink.AppendText(QString::fromLatin1(cell.data, cell.length));
}

// Every result keeps its cells' bytes at even addresses.
QStringView TextOf(const Cell& cell) {
    return {reinterpret_cast<const char16_t*>(cell.data), cell.length / 2};
}

void WriteXml(const Cell& cell, CellSink& sink) {
    const QStringView text = TextOf(cell);
    sink.AppendText(text.startsWith(QChar(0xFEFF)) ? text.sliced(1) : text);
}

// As the server writes it: groups of capital digits, the first three of them numbers.
void WriteGuid(const Cell& cell, CellSink& sink) {
    SQLGUID guid{};
    if (!Load(cell, guid)) return sink.AppendNull();
    std::array<char16_t, 36> text;
    char16_t* at = text.data();
    const auto put = [&at](quint32 number, int digits) {
        while (digits-- > 0) *at++ = u"0123456789ABCDEF"[(number >> (4 * digits)) & 15];
    };
    put(guid.Data1, 8);
    for (const quint32 group : {guid.Data2, guid.Data3}) {
        *at++ = u'-';
        put(group, 4);
    }
    for (int i = 0; i < 8; ++i) {
        if (i == 0 || i == 2) *at++ = u'-';
        put(guid.Data4[i], 2);
    }
    sink.AppendText(QStringView(text.data(), text.size()));
}

void WriteChecked(const DateTime& value, CellSink& sink) {
    value.IsValid() ? sink.AppendDateTime(value) : sink.AppendNull();
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

void WriteDate(const Cell& cell, CellSink& sink) {
    SQL_DATE_STRUCT raw{};
    if (!Load(cell, raw)) return sink.AppendNull();
    DateTime value;
    value.kind = DateTime::Kind::Date;
    SetDate(value, raw);
    WriteChecked(value, sink);
}

void WriteTime(const Cell& cell, CellSink& sink) {
    SQL_TIME_STRUCT raw{};
    if (!Load(cell, raw)) return sink.AppendNull();
    DateTime value;
    value.kind = DateTime::Kind::Time;
    SetTime(value, raw);
    WriteChecked(value, sink);
}

struct ExactTime {
    quint16 hour, minute, second, unused;
    quint32 nanoseconds;
};

void WriteTimeExact(const Column& column, const Cell& cell, CellSink& sink) {
    ExactTime raw{};
    if (!Load(cell, raw)) return sink.AppendNull();
    DateTime value;
    value.kind = DateTime::Kind::Time;
    SetTime(value, raw);
    SetFraction(value, raw.nanoseconds, column.fractionDigits);
    WriteChecked(value, sink);
}

void WriteTimestamp(const Column& column, const Cell& cell, CellSink& sink) {
    SQL_TIMESTAMP_STRUCT raw{};
    if (!Load(cell, raw)) return sink.AppendNull();
    DateTime value;
    SetTimestamp(value, raw, column.fractionDigits);
    WriteChecked(value, sink);
}

struct TimestampOffset {
    SQL_TIMESTAMP_STRUCT local;
    qint16 hours, minutes;
};

void WriteTimeOffset(const Column& column, const Cell& cell, CellSink& sink) {
    TimestampOffset raw{};
    if (!Load(cell, raw)) return sink.AppendNull();
    DateTime value;
    value.kind = DateTime::Kind::DateTimeOffset;
    SetTimestamp(value, raw.local, column.fractionDigits);
    value.offsetMinutes = static_cast<qint16>(raw.hours * 60 + raw.minutes);
    WriteChecked(value, sink);
}

}  // namespace

void WriteCell(const Column& column, const Cell& cell, CellSink& sink) {
    if (cell.IsNull()) return sink.AppendNull();
    switch (column.kind) {
        case CellKind::Boolean:
            return WriteBoolean(cell, sink);
        case CellKind::Integer:
            return WriteInteger(cell, sink);
        case CellKind::Single:
            return WriteSingle(cell, sink);
        case CellKind::Floating:
            return WriteFloating(cell, sink);
        case CellKind::Decimal:
            return WriteDecimal(cell, sink);
        case CellKind::Text:
            return sink.AppendText(TextOf(cell));
        case CellKind::Xml:
            return WriteXml(cell, sink);
        case CellKind::Guid:
            return WriteGuid(cell, sink);
        case CellKind::Bytes:
            return sink.AppendBytes(QByteArrayView(cell.data, cell.length));
        case CellKind::Date:
            return WriteDate(cell, sink);
        case CellKind::Time:
            return WriteTime(cell, sink);
        case CellKind::TimeExact:
            return WriteTimeExact(column, cell, sink);
        case CellKind::Timestamp:
            return WriteTimestamp(column, cell, sink);
        case CellKind::TimeOffset:
            return WriteTimeOffset(column, cell, sink);
    }
    sink.AppendNull();
}

Value ToValue(const Column& column, const Cell& cell) {
    ValueMaker value;
    WriteCell(column, cell, value);
    return value.Take();
}

}  // namespace quarv::ado::odbc
