#include "localdb/engine/DateParts.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace quarv::localdb::engine {

namespace {

struct PartName {
    QStringView name;
    DatePart part;
};

// The full name of each comes first.
constexpr std::array<PartName, 41> Names = {{
    {u"year", DatePart::Year},       {u"yy", DatePart::Year},
    {u"yyyy", DatePart::Year},       {u"quarter", DatePart::Quarter},
    {u"qq", DatePart::Quarter},      {u"q", DatePart::Quarter},
    {u"month", DatePart::Month},     {u"mm", DatePart::Month},
    {u"m", DatePart::Month},         {u"dayofyear", DatePart::DayOfYear},
    {u"dy", DatePart::DayOfYear},    {u"y", DatePart::DayOfYear},
    {u"day", DatePart::Day},         {u"dd", DatePart::Day},
    {u"d", DatePart::Day},           {u"week", DatePart::Week},
    {u"wk", DatePart::Week},         {u"ww", DatePart::Week},
    {u"weekday", DatePart::Weekday}, {u"dw", DatePart::Weekday},
    {u"w", DatePart::Weekday},       {u"hour", DatePart::Hour},
    {u"hh", DatePart::Hour},         {u"minute", DatePart::Minute},
    {u"mi", DatePart::Minute},       {u"n", DatePart::Minute},
    {u"second", DatePart::Second},   {u"ss", DatePart::Second},
    {u"s", DatePart::Second},        {u"millisecond", DatePart::Millisecond},
    {u"ms", DatePart::Millisecond},  {u"microsecond", DatePart::Microsecond},
    {u"mcs", DatePart::Microsecond}, {u"nanosecond", DatePart::Nanosecond},
    {u"ns", DatePart::Nanosecond},   {u"tzoffset", DatePart::TimeZone},
    {u"tz", DatePart::TimeZone},     {u"iso_week", DatePart::IsoWeek},
    {u"isowk", DatePart::IsoWeek},   {u"isoww", DatePart::IsoWeek},
    {u"isoweek", DatePart::IsoWeek},
}};

constexpr std::array<const char16_t*, 12> MonthNames = {
    u"January", u"February", u"March",     u"April",   u"May",      u"June",
    u"July",    u"August",   u"September", u"October", u"November", u"December"};
constexpr std::array<const char16_t*, 7> DayNames = {
    u"Monday", u"Tuesday", u"Wednesday", u"Thursday", u"Friday", u"Saturday", u"Sunday"};

// 1 is Monday: 0001-01-01 was one.
int DayOfWeek(int64_t days) {
    return static_cast<int>(days % 7) + 1;
}

int DayOfYear(const Moment& moment) {
    return static_cast<int>(moment.Days() - Moment::DaysFromCivil(moment.year, 1, 1)) + 1;
}

// The week of January 1st is the first, however short.
int WeekOf(const Moment& moment, int firstDay) {
    const int weekday = DayOfWeek(Moment::DaysFromCivil(moment.year, 1, 1));
    const int before = (weekday - firstDay + 7) % 7;
    return (DayOfYear(moment) - 1 + before) / 7 + 1;
}

// The week with the year's first Thursday is the first (ISO 8601).
int IsoWeekOf(const Moment& moment) {
    Moment thursday;
    thursday.SetDays(moment.Days() + 4 - DayOfWeek(moment.Days()));
    return (DayOfYear(thursday) - 1) / 7 + 1;
}

// 100-nanosecond ticks of the parts that have a fixed length up to a week; 0 for the others.
int64_t TicksOf(DatePart part) {
    switch (part) {
        case DatePart::DayOfYear:
        case DatePart::Day:
        case DatePart::Weekday:
            return Moment::TicksPerDay;
        case DatePart::Week:
            return Moment::TicksPerDay * 7;
        case DatePart::Hour:
            return 36'000'000'000;
        case DatePart::Minute:
            return 600'000'000;
        case DatePart::Second:
            return 10'000'000;
        case DatePart::Millisecond:
            return 10'000;
        case DatePart::Microsecond:
            return 10;
        default:
            return 0;
    }
}

int MonthsOf(DatePart part) {
    return part == DatePart::Year ? 12 : part == DatePart::Quarter ? 3 : 1;
}

bool AddMonths(int64_t count, Moment& moment) {
    const int64_t months = int64_t{moment.year} * 12 + moment.month - 1 + count;
    if (months < 12 || months >= int64_t{10000} * 12) return false;
    moment.year = static_cast<int>(months / 12);
    moment.month = static_cast<int>(months % 12) + 1;
    moment.day = std::min(moment.day, DateParts::DaysInMonth(moment.year, moment.month));
    return true;
}

bool AddTicks(int64_t days, int64_t ticks, Moment& moment) {
    const int64_t clock = moment.Ticks() + ticks % Moment::TicksPerDay;
    const int64_t carried = clock < 0 ? -1 : clock >= Moment::TicksPerDay ? 1 : 0;
    const int64_t day = moment.Days() + days + ticks / Moment::TicksPerDay + carried;
    if (day < 0 || day > Moment::DaysFromCivil(9999, 12, 31)) return false;
    moment.SetDays(day);
    moment.SetTicks(clock - carried * Moment::TicksPerDay);
    return true;
}

// Whole units since 0001-01-01, whose fixed length is `ticks`.
std::optional<int64_t> UnitsOf(const Moment& moment, int64_t ticks) {
    int64_t units = 0;
    if (__builtin_mul_overflow(moment.Days(), Moment::TicksPerDay / ticks, &units)) return {};
    if (__builtin_add_overflow(units, moment.Ticks() / ticks, &units)) return {};
    return units;
}

}  // namespace

std::optional<DatePart> DateParts::Find(const QString& word) {
    for (const PartName& entry : Names) {
        if (entry.name.compare(word, Qt::CaseInsensitive) == 0) return entry.part;
    }
    return std::nullopt;
}

QString DateParts::NameOf(DatePart part) {
    const auto* found = std::find_if(Names.begin(), Names.end(),
                                     [part](const PartName& entry) { return entry.part == part; });
    return found->name.toString();
}

bool DateParts::IsClock(DatePart part) {
    return part >= DatePart::Hour && part <= DatePart::Nanosecond;
}

int DateParts::DaysInMonth(int year, int month) {
    const int nextYear = month == 12 ? year + 1 : year;
    const int next = month == 12 ? 1 : month + 1;
    return static_cast<int>(Moment::DaysFromCivil(nextYear, next, 1) -
                            Moment::DaysFromCivil(year, month, 1));
}

int DateParts::Read(DatePart part, const Moment& moment, int firstDay) {
    switch (part) {
        case DatePart::Year:
            return moment.year;
        case DatePart::Quarter:
            return (moment.month - 1) / 3 + 1;
        case DatePart::Month:
            return moment.month;
        case DatePart::DayOfYear:
            return DayOfYear(moment);
        case DatePart::Day:
            return moment.day;
        case DatePart::Week:
            return WeekOf(moment, firstDay);
        case DatePart::Weekday:
            return (DayOfWeek(moment.Days()) - firstDay + 7) % 7 + 1;
        case DatePart::Hour:
            return moment.hour;
        case DatePart::Minute:
            return moment.minute;
        case DatePart::Second:
            return moment.second;
        case DatePart::Millisecond:
            return moment.fraction / 10'000;
        case DatePart::Microsecond:
            return moment.fraction / 10;
        case DatePart::Nanosecond:
            return moment.fraction * 100;
        case DatePart::IsoWeek:
            return IsoWeekOf(moment);
        case DatePart::TimeZone:
            return moment.offset;
    }
    return 0;
}

QString DateParts::Name(DatePart part, const Moment& moment, int firstDay) {
    if (part == DatePart::Month) {
        return QString::fromUtf16(MonthNames[static_cast<size_t>(moment.month - 1)]);
    }
    if (part == DatePart::Weekday) {
        return QString::fromUtf16(DayNames[static_cast<size_t>(DayOfWeek(moment.Days()) - 1)]);
    }
    if (part == DatePart::TimeZone) {
        const int minutes = std::abs(moment.offset);
        return QStringLiteral("%1%2:%3")
            .arg(QLatin1Char(moment.offset < 0 ? '-' : '+'))
            .arg(minutes / 60, 2, 10, QChar(u'0'))
            .arg(minutes % 60, 2, 10, QChar(u'0'));
    }
    return QString::number(Read(part, moment, firstDay));
}

bool DateParts::Add(DatePart part, int64_t count, Moment& moment) {
    if (part <= DatePart::Month) return AddMonths(count * MonthsOf(part), moment);
    if (part == DatePart::Nanosecond) {
        // To the nearest hundred, as the finest type keeps them.
        return AddTicks(0, (count + (count < 0 ? -50 : 50)) / 100, moment);
    }
    const int64_t unit = TicksOf(part);
    if (unit >= Moment::TicksPerDay) {
        return AddTicks(count * (unit / Moment::TicksPerDay), 0, moment);
    }
    const int64_t perDay = Moment::TicksPerDay / unit;
    return AddTicks(count / perDay, count % perDay * unit, moment);
}

std::optional<int64_t> DateParts::Between(DatePart part, const Moment& from, const Moment& to) {
    if (part <= DatePart::Month) {
        const auto place = [part](const Moment& m) {
            return (int64_t{m.year} * 12 + m.month - 1) / MonthsOf(part);
        };
        return place(to) - place(from);
    }
    // Weeks begin on Sunday here, whatever the session's first day is.
    if (part == DatePart::Week) return (to.Days() + 1) / 7 - (from.Days() + 1) / 7;
    const int64_t ticks = part == DatePart::Nanosecond ? 1 : TicksOf(part);
    const std::optional<int64_t> begin = UnitsOf(from, ticks), end = UnitsOf(to, ticks);
    int64_t count = 0;
    if (!begin || !end || __builtin_sub_overflow(*end, *begin, &count)) return std::nullopt;
    const int64_t scale = part == DatePart::Nanosecond ? 100 : 1;
    if (__builtin_mul_overflow(count, scale, &count)) return std::nullopt;
    return count;
}

}  // namespace quarv::localdb::engine
