// DATETRUNC and DATE_BUCKET: the beginning of what a moment lies in.
#include <algorithm>
#include <array>

#include "localdb/engine/DateArguments.h"
#include "localdb/engine/DateParts.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

constexpr int64_t TicksPerSecond = 10'000'000;

// The length of the parts that are always equally long, in 100 nanoseconds; else 0.
int64_t TicksOf(DatePart part) {
    switch (part) {
        case DatePart::Week:
            return 7 * Moment::TicksPerDay;
        case DatePart::DayOfYear:
        case DatePart::Day:
            return Moment::TicksPerDay;
        case DatePart::Hour:
            return 3600 * TicksPerSecond;
        case DatePart::Minute:
            return 60 * TicksPerSecond;
        case DatePart::Second:
            return TicksPerSecond;
        case DatePart::Millisecond:
            return TicksPerSecond / 1000;
        case DatePart::Microsecond:
            return TicksPerSecond / 1'000'000;
        default:
            return 0;
    }
}

int MonthsOf(DatePart part) {
    return part == DatePart::Year ? 12 : part == DatePart::Quarter ? 3 : 1;
}

int64_t AllTicks(const Moment& moment) {
    return moment.Days() * Moment::TicksPerDay + moment.Ticks();
}

void SetAllTicks(Moment& moment, int64_t ticks) {
    moment.SetDays(ticks / Moment::TicksPerDay);
    moment.SetTicks(ticks % Moment::TicksPerDay);
}

int64_t FloorDivide(int64_t a, int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

// The first day of the week that the day lies in; 0001-01-01 was a Monday.
int64_t WeekBegin(int64_t day, int firstDay) {
    return day - (((day + 1 - firstDay) % 7 + 7) % 7);
}

SqlValue Stored(const Moment& moment, const SqlType& type) {
    const std::optional<SqlValue> value = ValueOf(moment, type);
    if (!value) throw SqlError(517, {type.Name()});
    return *value;
}

SqlValue Truncate(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    Moment moment = MomentOf(a[0], call.parts[0]->type);
    const DatePart part = PartOf(call);
    if (part == DatePart::Week || part == DatePart::IsoWeek) {
        const int64_t first = evaluation.environment->Ask(SystemValue::DateFirst).integer;
        const int64_t begin =
            WeekBegin(moment.Days(), part == DatePart::IsoWeek ? 1 : static_cast<int>(first));
        if (begin < 0) throw SqlError(517, {call.type.Name()});
        moment.SetDays(begin);
        moment.SetTicks(0);
    } else if (const int64_t unit = TicksOf(part)) {
        SetAllTicks(moment, AllTicks(moment) / unit * unit);
    } else {
        const int months = MonthsOf(part);
        moment.month = (moment.month - 1) / months * months + 1;
        moment.day = 1;
        moment.SetTicks(0);
    }
    return Stored(moment, call.type);
}

[[noreturn]] void RefusePart(DatePart part, const QString& function) {
    throw SqlError(9806, {DateParts::NameOf(part), function});
}

// Dates and times alone; a text is one of seven digits.
BoundPtr AsMoment(BoundPtr value, int number, const QString& function) {
    const SqlType full = MakeType(TypeKind::DateTime2, 0, 0, 7);
    const bool text = ClassOf(value->type) == TypeClass::Text && !IsOldLong(value->type.kind) &&
                      value->type.kind != TypeKind::Xml;
    if (value->untypedNull || text) return ExpressionBinder::Convert(std::move(value), full);
    if (ClassOf(value->type) == TypeClass::Moment) return value;
    throw SqlError(8116, {value->type.Name(), QString::number(number), function});
}

void CheckPart(DatePart part, const QString& function, const SqlType& type) {
    const bool clock = DateParts::IsClock(part);
    const bool fits =
        (type.kind != TypeKind::Date || !clock) && (type.kind != TypeKind::Time || clock);
    const bool tooFine =
        (part == DatePart::Millisecond && HasTimeScale(type.kind) && type.scale < 3) ||
        (part == DatePart::Microsecond && (!HasTimeScale(type.kind) || type.scale < 6));
    if (fits && !tooFine) return;
    throw SqlError(9810, {DateParts::NameOf(part), function, type.Name()});
}

BoundPtr BindTruncate(const QString& function, const QString& word, Arguments arguments) {
    const DatePart part = FindPart(function, word);
    if (part == DatePart::Weekday || part == DatePart::Nanosecond || part == DatePart::TimeZone) {
        RefusePart(part, function);
    }
    arguments[0] = AsMoment(std::move(arguments[0]), 2, function);
    const SqlType type = arguments[0]->type;
    CheckPart(part, function, type);
    return WithPart(MakeCall(Truncate, type, std::move(arguments)), part);
}

int64_t MonthNumber(const Moment& moment) {
    return int64_t{moment.year} * 12 + moment.month - 1;
}

// Whole buckets of months from the origin to the moment, the last that does not begin behind it.
Moment MonthBucket(const Moment& origin, const Moment& moment, int64_t months) {
    int64_t count = FloorDivide(MonthNumber(moment) - MonthNumber(origin), months);
    while (true) {
        Moment begin = origin;
        if (!DateParts::Add(DatePart::Month, count * months, begin)) {
            throw SqlError(517, {QStringLiteral("datetime2")});
        }
        if (AllTicks(begin) <= AllTicks(moment)) return begin;
        --count;
    }
}

SqlValue Bucket(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    constexpr int64_t MostMonths = 120'000;
    if (a[0].integer <= 0) throw SqlError(9834);
    const Moment moment = MomentOf(a[1], call.parts[1]->type);
    Moment origin;
    if (call.parts.size() > 2) origin = MomentOf(a[2], call.parts[2]->type);
    const DatePart part = PartOf(call);
    const int64_t unit = TicksOf(part);
    Moment begin = moment;
    if (unit == 0) {
        const int64_t width = std::min(a[0].integer, MostMonths) * MonthsOf(part);
        begin = MonthBucket(origin, moment, width);
    } else {
        int64_t width = 0;
        if (__builtin_mul_overflow(a[0].integer, unit, &width))
            throw SqlError(517, {call.type.Name()});
        const int64_t first = AllTicks(origin);
        const int64_t ticks = first + FloorDivide(AllTicks(moment) - first, width) * width;
        if (ticks < 0) throw SqlError(517, {call.type.Name()});
        SetAllTicks(begin, ticks);
    }
    begin.offset = moment.offset;
    return Stored(begin, call.type);
}

BoundPtr BindBucket(const QString& function, const QString& word, Arguments arguments) {
    const DatePart part = FindPart(function, word);
    const bool known =
        part != DatePart::DayOfYear && part != DatePart::Weekday && part < DatePart::Microsecond;
    if (!known) RefusePart(part, function);
    arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]), MakeType(TypeKind::BigInt));
    arguments[1] = AsMoment(std::move(arguments[1]), 3, function);
    const SqlType type = arguments[1]->type;
    CheckPart(part, function, type);
    if (arguments.size() > 2)
        arguments[2] = ExpressionBinder::Convert(std::move(arguments[2]), type);
    return WithPart(MakeCall(Bucket, type, std::move(arguments)), part);
}

}  // namespace

std::span<const FunctionEntry> DateBuckets() {
    static constexpr std::array<FunctionEntry, 2> Table = {{
        {u"datetrunc", 2, 2, nullptr, BindTruncate},
        {u"date_bucket", 3, 4, nullptr, BindBucket},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
