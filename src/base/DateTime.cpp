#include "base/DateTime.h"

#include <QDate>
#include <QTime>
#include <QVarLengthArray>

#include "base/DateTimeFormat.h"

namespace quarv {

namespace {

constexpr int MaxFractionDigits = 7;
constexpr quint32 FractionLimit = 10'000'000;
constexpr int MaxOffsetMinutes = 14 * 60;

bool HasDate(DateTime::Kind kind) {
    return kind != DateTime::Kind::Time;
}

bool HasTime(DateTime::Kind kind) {
    return kind != DateTime::Kind::Date;
}

// Appends `number` with at least `width` digits.
void AppendNumber(QString& text, int number, int width) {
    char16_t digits[10];
    int count = 0;
    for (; number > 0 || count < width; number /= 10) {
        digits[count++] = static_cast<char16_t>(u'0' + number % 10);
    }
    while (count > 0) text += QChar(digits[--count]);
}

void AppendOffset(QString& text, int minutes) {
    text += minutes < 0 ? QStringLiteral(" -") : QStringLiteral(" +");
    AppendNumber(text, qAbs(minutes) / 60, 2);
    text += u':';
    AppendNumber(text, qAbs(minutes) % 60, 2);
}

// A cursor that takes fixed fields from the front of a text.
struct Reader {
    QStringView rest;

    bool Take(char16_t sign) {
        if (!rest.startsWith(sign)) return false;
        rest = rest.sliced(1);
        return true;
    }

    // Exactly `width` digits.
    template <typename Number>
    bool Take(Number& number, int width) {
        if (rest.size() < width) return false;
        int value = 0;
        for (QChar digit : rest.first(width)) {
            if (digit < u'0' || digit > u'9') return false;
            value = value * 10 + (digit.unicode() - u'0');
        }
        number = static_cast<Number>(value);
        rest = rest.sliced(width);
        return true;
    }
};

bool TakeDate(Reader& reader, DateTime& value) {
    return reader.Take(value.year, 4) && reader.Take(u'-') && reader.Take(value.month, 2) &&
           reader.Take(u'-') && reader.Take(value.day, 2);
}

bool TakeFraction(Reader& reader, DateTime& value) {
    if (!reader.Take(u'.')) return true;
    int digit = 0;
    while (value.fractionDigits < MaxFractionDigits && reader.Take(digit, 1)) {
        value.fraction = value.fraction * 10 + static_cast<quint32>(digit);
        ++value.fractionDigits;
    }
    for (int i = value.fractionDigits; i < MaxFractionDigits; ++i) value.fraction *= 10;
    return value.fractionDigits > 0;
}

bool TakeTime(Reader& reader, DateTime& value) {
    return reader.Take(value.hour, 2) && reader.Take(u':') && reader.Take(value.minute, 2) &&
           reader.Take(u':') && reader.Take(value.second, 2) && TakeFraction(reader, value);
}

bool TakeOffset(Reader& reader, DateTime& value) {
    reader.Take(u' ');
    const bool west = reader.rest.startsWith(u'-');
    if (!west && !reader.rest.startsWith(u'+')) return false;
    reader.rest = reader.rest.sliced(1);
    int hours = 0;
    int minutes = 0;
    if (!reader.Take(hours, 2) || !reader.Take(u':') || !reader.Take(minutes, 2)) return false;
    if (minutes > 59) return false;
    const int offset = hours * 60 + minutes;
    value.offsetMinutes = static_cast<qint16>(west ? -offset : offset);
    return true;
}

// Ticks of 100 nanoseconds since the start of the Julian day count, in UTC where an offset is
// known.
qint64 Ticks(const DateTime& value) {
    const qint64 days =
        HasDate(value.kind) ? QDate(value.year, value.month, value.day).toJulianDay() : 0;
    if (!HasTime(value.kind)) return days * 86'400 * FractionLimit;
    qint64 seconds = ((days * 24 + value.hour) * 60 + value.minute) * 60 + value.second;
    if (value.kind == DateTime::Kind::DateTimeOffset) seconds -= value.offsetMinutes * 60;
    return seconds * FractionLimit + value.fraction;
}

}  // namespace

bool DateTime::IsValid() const {
    if (HasDate(kind) && (year < 1 || year > 9999 || !QDate::isValid(year, month, day)))
        return false;
    if (HasTime(kind) && (hour > 23 || minute > 59 || second > 59 || fraction >= FractionLimit ||
                          fractionDigits > MaxFractionDigits)) {
        return false;
    }
    return kind != Kind::DateTimeOffset || qAbs(offsetMinutes) <= MaxOffsetMinutes;
}

QString DateTime::ToText(const QLocale& locale) const {
    const DateTimeFormat& format = DateTimeFormat::Of(locale);
    QString text;
    if (HasDate(kind)) text = locale.toString(QDate(year, month, day), format.date);
    if (HasTime(kind)) {
        if (!text.isEmpty()) text += u' ';
        text += locale.toString(QTime(hour, minute, second), format.time);
    }
    if (kind == Kind::DateTimeOffset) AppendOffset(text, offsetMinutes);
    return text;
}

QString DateTime::ToIsoText() const {
    QString text;
    text.reserve(34);
    if (HasDate(kind)) {
        AppendNumber(text, year, 4);
        text += u'-';
        AppendNumber(text, month, 2);
        text += u'-';
        AppendNumber(text, day, 2);
    }
    if (HasTime(kind)) {
        if (!text.isEmpty()) text += u' ';
        AppendNumber(text, hour, 2);
        text += u':';
        AppendNumber(text, minute, 2);
        text += u':';
        AppendNumber(text, second, 2);
        if (fractionDigits > 0) {
            text += u'.';
            AppendNumber(text, static_cast<int>(fraction), MaxFractionDigits);
            text.chop(MaxFractionDigits - fractionDigits);
        }
    }
    if (kind == Kind::DateTimeOffset) AppendOffset(text, offsetMinutes);
    return text;
}

std::optional<DateTime> DateTime::ParseIso(QStringView text) {
    DateTime value;
    Reader reader{text};
    const bool date = text.size() > 4 && text[4] == u'-';
    if (date && !TakeDate(reader, value)) return {};
    if (date && reader.rest.isEmpty()) {
        value.kind = Kind::Date;
    } else {
        if (date && !reader.Take(u' ') && !reader.Take(u'T')) return {};
        if (!TakeTime(reader, value)) return {};
        value.kind = date ? Kind::DateTime : Kind::Time;
        if (date && !reader.rest.isEmpty()) {
            if (!TakeOffset(reader, value)) return {};
            value.kind = Kind::DateTimeOffset;
        }
    }
    if (!reader.rest.isEmpty() || !value.IsValid()) return {};
    return value;
}

std::partial_ordering DateTime::Compare(const DateTime& a, const DateTime& b) {
    const auto family = [](Kind kind) { return kind == Kind::Date ? Kind::DateTime : kind; };
    if (family(a.kind) != family(b.kind)) return std::partial_ordering::unordered;
    return Ticks(a) <=> Ticks(b);
}

}  // namespace quarv
