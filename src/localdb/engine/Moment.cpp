#include "localdb/engine/Moment.h"

#include <QDateTime>

namespace quarv::localdb::engine {

namespace {

constexpr int64_t DaysTo1900 = 693595;
constexpr int64_t TicksPerMinute = 600'000'000;
constexpr int MaxTimeScale = 7;
constexpr int64_t ThirdsPerDay = 25'920'000;  // of 1/300 s

int64_t FloorDivide(int64_t a, int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

int64_t UnitOf(int scale) {
    int64_t unit = 1;
    for (; scale < MaxTimeScale; ++scale) unit *= 10;
    return unit;
}

// Half of the last digit up.
int64_t RoundTicks(int64_t ticks, int scale) {
    const int64_t unit = UnitOf(scale);
    return (ticks + unit / 2) / unit * unit;
}

// What rounding would carry beyond the last day is cut instead.
std::optional<int64_t> StoreTicks(int64_t ticks, int scale) {
    if (ticks < 0 || ticks > Moment::LastTick) return std::nullopt;
    const int64_t rounded = RoundTicks(ticks, scale);
    if (rounded <= Moment::LastTick) return rounded;
    return rounded - UnitOf(scale);
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
    return Store(SqlType{kind, 0, 0, MaxTimeScale});
}

std::optional<int64_t> Moment::Store(const SqlType& type) const {
    const int64_t days = Days();
    switch (type.kind) {
        case TypeKind::Date:
            return year >= 1 && year <= 9999 ? std::optional(days) : std::nullopt;
        case TypeKind::Time:
            return RoundTicks(Ticks(), type.scale) % TicksPerDay;
        case TypeKind::DateTime2:
            return StoreTicks(days * TicksPerDay + Ticks(), type.scale);
        case TypeKind::DateTimeOffset:
            return StoreTicks(days * TicksPerDay + Ticks() - offset * TicksPerMinute, type.scale);
        case TypeKind::SmallDateTime: {
            // Rounded to the minute: 29.998 seconds go down, 29.999 up.
            const int64_t minutes = (days - DaysTo1900) * 1440 +
                                    (Ticks() + TicksPerMinute / 2 + 10'000) / TicksPerMinute;
            const int64_t last = (DaysFromCivil(2079, 6, 6) - DaysTo1900) * 1440 + 1439;
            return minutes >= 0 && minutes <= last ? std::optional(minutes) : std::nullopt;
        }
        default:
            break;
    }
    if (year < 1753 || year > 9999) return std::nullopt;
    const int64_t thirds = (days - DaysTo1900) * ThirdsPerDay + (Ticks() * 3 + 50'000) / 100'000;
    const int64_t end = (DaysFromCivil(10000, 1, 1) - DaysTo1900) * ThirdsPerDay;
    return thirds < end ? std::optional(thirds) : std::nullopt;
}

Moment Moment::Load(TypeKind kind, int64_t stored, int offset) {
    Moment moment = LoadFully(kind, stored, offset);
    // To whole milliseconds, as every reader of datetime does.
    if (kind == TypeKind::DateTime) moment.fraction = (moment.fraction + 5'000) / 10'000 * 10'000;
    return moment;
}

Moment Moment::LoadFully(TypeKind kind, int64_t stored, int offset) {
    Moment moment;
    switch (kind) {
        case TypeKind::Date:
            moment.SetDays(stored);
            break;
        case TypeKind::Time:
            moment.SetTicks(stored);
            break;
        case TypeKind::DateTime2:
        case TypeKind::DateTimeOffset: {
            const int64_t local = stored + offset * TicksPerMinute;
            moment.SetDays(FloorDivide(local, TicksPerDay));
            moment.SetTicks(local - FloorDivide(local, TicksPerDay) * TicksPerDay);
            moment.offset = offset;
            break;
        }
        case TypeKind::SmallDateTime:
            moment.SetDays(FloorDivide(stored, 1440) + DaysTo1900);
            moment.SetTicks((stored - FloorDivide(stored, 1440) * 1440) * TicksPerMinute);
            break;
        default: {
            const int64_t days = FloorDivide(stored, ThirdsPerDay);
            const int64_t thirds = stored - days * ThirdsPerDay;
            moment.SetDays(days + DaysTo1900);
            moment.SetTicks((thirds * 100'000 + 1) / 3);
        }
    }
    return moment;
}

Moment Moment::Now() {
    const QDateTime now = QDateTime::currentDateTime();
    Moment moment;
    moment.year = now.date().year();
    moment.month = now.date().month();
    moment.day = now.date().day();
    moment.SetTicks(now.time().msecsSinceStartOfDay() * int64_t{10'000});
    moment.offset = now.offsetFromUtc() / 60;
    return moment;
}

}  // namespace quarv::localdb::engine
