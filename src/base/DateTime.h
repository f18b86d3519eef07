// DateTime: a point of the calendar as a database gives it: a date, a time of day, both, or both
// with an offset from UTC. Seven fractional digits; proleptic Gregorian years 1 to 9999.
#pragma once

#include <QLocale>
#include <QString>
#include <compare>
#include <optional>

namespace quarv {

struct DateTime {
    enum class Kind : quint8 { Date, Time, DateTime, DateTimeOffset };

    Kind kind = Kind::DateTime;
    quint8 month = 1;           // 1..12
    quint8 day = 1;             // 1..31
    quint8 hour = 0;            // 0..23
    quint8 minute = 0;          // 0..59
    quint8 second = 0;          // 0..59
    quint8 fractionDigits = 0;  // 0..7: how many digits of `fraction` the source carries
    qint16 year = 1;            // 1..9999
    qint16 offsetMinutes = 0;   // -840..840, east positive; meaningful for DateTimeOffset only
    quint32 fraction = 0;       // in 100 nanoseconds, 0..9,999,999

    // True where every member that `kind` uses lies in its range and the day exists.
    bool IsValid() const;

    // The locale's short date with a four-digit year and its time with seconds, a blank between;
    // only the half that `kind` has. An offset follows as " +hh:mm". Fractions are not shown.
    QString ToText(const QLocale& locale) const;

    // ISO 8601 order of members, "yyyy-MM-dd hh:mm:ss.fffffff +hh:mm", the halves that `kind` has,
    // and exactly `fractionDigits` digits.
    QString ToIsoText() const;

    // Reads what ToIsoText writes (a "T" may stand for the blank, the blank before the offset may
    // miss); sets `kind` by the halves found. Empty where the text is not of that form.
    static std::optional<DateTime> ParseIso(QStringView text);

    // Order in time. A date is its midnight; offsets are taken off; a time of day is ordered beside
    // times of day only, a date/time with an offset beside its like only.
    static std::partial_ordering Compare(const DateTime& a, const DateTime& b);

    friend bool operator==(const DateTime&, const DateTime&) = default;
};

}  // namespace quarv
