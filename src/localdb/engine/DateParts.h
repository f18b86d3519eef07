// DateParts: the parts that the date functions count in ("DATEPART": names and abbreviations), and
// reading, naming, adding and counting them. Knows no expression.
#pragma once

#include <QString>
#include <optional>

#include "localdb/engine/Moment.h"

namespace quarv::localdb::engine {

enum class DatePart : uint8_t {
    Year,
    Quarter,
    Month,
    DayOfYear,
    Day,
    Week,
    Weekday,
    Hour,
    Minute,
    Second,
    Millisecond,
    Microsecond,
    Nanosecond,
    TimeZone,
    IsoWeek,
};

class DateParts {
  public:
    // By name or abbreviation in any letter case.
    static std::optional<DatePart> Find(const QString& word);
    // The full name, as messages show it.
    static QString NameOf(DatePart part);
    static bool IsClock(DatePart part);  // hour and smaller

    // `firstDay` is the week's first day: 1 is Monday, 7 is Sunday. A time zone is in minutes.
    static int Read(DatePart part, const Moment& moment, int firstDay);
    // The name of a month or a weekday, a time zone as +hh:mm, else the number.
    static QString Name(DatePart part, const Moment& moment, int firstDay);
    // False where the result lies outside the years 1 to 9999. A day that the month does not have
    // becomes the month's last.
    static bool Add(DatePart part, int64_t count, Moment& moment);
    // The boundaries of the part that lie between both, negative where `to` is before `from`.
    // Nothing where they are more than a bigint counts.
    static std::optional<int64_t> Between(DatePart part, const Moment& from, const Moment& to);
    static int DaysInMonth(int year, int month);
};

}  // namespace quarv::localdb::engine
