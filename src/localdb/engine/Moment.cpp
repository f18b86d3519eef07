#include "localdb/engine/Moment.h"

#include <QDateTime>
#include <array>
#include <cstdio>

namespace quarv::localdb::engine {

namespace {

constexpr int64_t DaysTo1900 = 693595;
constexpr int64_t TicksPerMinute = 600'000'000;
constexpr int64_t ThirdsPerDay = 25'920'000;  // of 1/300 s

constexpr std::array<const char*, 12> Months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

template <class... Args>
std::string Format(const char* format, Args... args) {
    std::array<char, 64> buffer;
    const int length = std::snprintf(buffer.data(), buffer.size(), format, args...);
    return {buffer.data(), static_cast<size_t>(length)};
}

int64_t FloorDivide(int64_t a, int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

std::string Clock12(const Moment& m) {
    const int hour = m.hour % 12 == 0 ? 12 : m.hour % 12;
    return Format("%2d:%02d%s", hour, m.minute, m.hour < 12 ? "AM" : "PM");
}

// The milliseconds that a datetime shows: .000, .003, .007.
std::string Milliseconds(TypeKind kind, const Moment& m) {
    if (kind == TypeKind::SmallDateTime) return {};
    return Format(".%03d", m.fraction / 10000);
}

}  // namespace

int64_t Moment::DaysFromCivil(int year, int month, int day) {
    const int64_t y = month <= 2 ? year - 1 : year;
    const int64_t era = FloorDivide(y, 400);
    const int64_t yearOfEra = y - era * 400;
    const int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 306;
}

void Moment::SetDays(int64_t days) {
    const int64_t shifted = days + 306;
    const int64_t era = FloorDivide(shifted, 146097);
    const int64_t dayOfEra = shifted - era * 146097;
    const int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    year = static_cast<int>(yearOfEra + era * 400 + (month <= 2 ? 1 : 0));
}

int64_t Moment::Ticks() const {
    return ((hour * 60 + minute) * int64_t{60} + second) * 10'000'000 + fraction;
}

void Moment::SetTicks(int64_t ticks) {
    fraction = static_cast<int>(ticks % 10'000'000);
    const int64_t seconds = ticks / 10'000'000;
    second = static_cast<int>(seconds % 60);
    minute = static_cast<int>(seconds / 60 % 60);
    hour = static_cast<int>(seconds / 3600);
}

std::optional<int64_t> Moment::Store(TypeKind kind) const {
    const int64_t days = Days();
    if (kind == TypeKind::Date) {
        return year >= 1 && year <= 9999 ? std::optional(days) : std::nullopt;
    }
    if (kind == TypeKind::SmallDateTime) {
        // Rounded to the minute: 29.998 seconds go down, 29.999 up.
        const int64_t minutes =
            (days - DaysTo1900) * 1440 + (Ticks() + TicksPerMinute / 2 + 10'000) / TicksPerMinute;
        const int64_t last = (DaysFromCivil(2079, 6, 6) - DaysTo1900) * 1440 + 1439;
        return minutes >= 0 && minutes <= last ? std::optional(minutes) : std::nullopt;
    }
    if (year < 1753 || year > 9999) return std::nullopt;
    const int64_t thirds = (days - DaysTo1900) * ThirdsPerDay + (Ticks() * 3 + 50'000) / 100'000;
    const int64_t end = (DaysFromCivil(10000, 1, 1) - DaysTo1900) * ThirdsPerDay;
    return thirds < end ? std::optional(thirds) : std::nullopt;
}

Moment Moment::Load(TypeKind kind, int64_t stored) {
    Moment moment;
    if (kind == TypeKind::Date) {
        moment.SetDays(stored);
    } else if (kind == TypeKind::SmallDateTime) {
        moment.SetDays(FloorDivide(stored, 1440) + DaysTo1900);
        moment.SetTicks((stored - FloorDivide(stored, 1440) * 1440) * TicksPerMinute);
    } else {
        const int64_t days = FloorDivide(stored, ThirdsPerDay);
        const int64_t thirds = stored - days * ThirdsPerDay;
        moment.SetDays(days + DaysTo1900);
        // To whole milliseconds, as every reader of datetime does.
        moment.SetTicks((thirds * 10 + 1) / 3 * 10'000);
    }
    return moment;
}

std::optional<std::string> Moment::ToText(TypeKind kind, int style) const {
    const bool dateOnly = kind == TypeKind::Date;
    const std::string iso = Format("%04d-%02d-%02d", year, month, day);
    const std::string clock = Format("%02d:%02d:%02d", hour, minute, second);
    switch (style) {
        case 0:
        case 100: {
            if (dateOnly) return iso;
            return Format("%s %2d %04d ", Months[static_cast<size_t>(month - 1)], day, year) +
                   Clock12(*this);
        }
        case 101:
            return Format("%02d/%02d/%04d", month, day, year);
        case 102:
            return Format("%04d.%02d.%02d", year, month, day);
        case 103:
            return Format("%02d/%02d/%04d", day, month, year);
        case 104:
            return Format("%02d.%02d.%04d", day, month, year);
        case 105:
            return Format("%02d-%02d-%04d", day, month, year);
        case 8:
        case 108:
            return clock;
        case 110:
            return Format("%02d-%02d-%04d", month, day, year);
        case 111:
            return Format("%04d/%02d/%02d", year, month, day);
        case 12:
            return Format("%02d%02d%02d", year % 100, month, day);
        case 112:
            return Format("%04d%02d%02d", year, month, day);
        case 20:
        case 120:
            return dateOnly ? iso : iso + ' ' + clock;
        case 21:
        case 25:
        case 121:
            return dateOnly ? iso : iso + ' ' + clock + Format(".%03d", fraction / 10000);
        case 23:
            return iso;
        case 126:
            return dateOnly ? iso : iso + 'T' + clock + (fraction ? Milliseconds(kind, *this) : "");
        default:
            return std::nullopt;
    }
}

Moment Moment::Now() {
    const QDateTime now = QDateTime::currentDateTime();
    Moment moment;
    moment.year = now.date().year();
    moment.month = now.date().month();
    moment.day = now.date().day();
    moment.SetTicks(now.time().msecsSinceStartOfDay() * int64_t{10'000});
    return moment;
}

}  // namespace quarv::localdb::engine
