// The functions that make dates out of numbers, EOMONTH and ISDATE.
#include <array>
#include <cstdlib>

#include "localdb/engine/DateArguments.h"
#include "localdb/engine/DateParts.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

[[noreturn]] void CannotMake(const SqlType& type) {
    throw SqlError(289, {type.Name()});
}

bool SetDate(Moment& moment, const SqlValue* a) {
    const int64_t year = a[0].integer, month = a[1].integer, day = a[2].integer;
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
    moment.year = static_cast<int>(year);
    moment.month = static_cast<int>(month);
    if (day > DateParts::DaysInMonth(moment.year, moment.month)) return false;
    moment.day = static_cast<int>(day);
    return true;
}

bool Within(const SqlValue& value, int64_t end) {
    return value.integer >= 0 && value.integer < end;
}

// `count` of hour, minute, second.
bool SetClock(Moment& moment, const SqlValue* a, size_t count) {
    if (!Within(a[0], 24) || !Within(a[1], 60) || (count > 2 && !Within(a[2], 60))) return false;
    moment.hour = static_cast<int>(a[0].integer);
    moment.minute = static_cast<int>(a[1].integer);
    if (count > 2) moment.second = static_cast<int>(a[2].integer);
    return true;
}

SqlValue Made(const BoundCall& call, const Moment& moment, bool valid) {
    std::optional<SqlValue> value;
    if (valid) value = ValueOf(moment, call.type);
    if (!value) CannotMake(call.type);
    return *value;
}

SqlValue MakeDate(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    Moment moment;
    const bool valid = SetDate(moment, a);
    return Made(call, moment, valid);
}

SqlValue MakeDateTime(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    Moment moment;
    const bool valid = SetDate(moment, a) && SetClock(moment, a + 3, 3) && Within(a[6], 1000);
    if (valid) moment.fraction = static_cast<int>(a[6].integer) * 10'000;
    return Made(call, moment, valid);
}

SqlValue MakeSmallDateTime(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    Moment moment;
    const bool valid = SetDate(moment, a) && SetClock(moment, a + 3, 2);
    return Made(call, moment, valid);
}

// The fraction counts units of the scale's last digit.
bool SetFraction(Moment& moment, const SqlValue& fraction, int scale) {
    int64_t units = 1, ticks = 10'000'000;
    for (int i = 0; i < scale; ++i) {
        units *= 10;
        ticks /= 10;
    }
    if (!Within(fraction, units)) return false;
    moment.fraction = static_cast<int>(fraction.integer * ticks);
    return true;
}

SqlValue MakeTime(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    Moment moment;
    const bool valid = SetClock(moment, a, 3) && SetFraction(moment, a[3], call.type.scale);
    return Made(call, moment, valid);
}

SqlValue MakeDateTime2(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    Moment moment;
    const bool valid = SetDate(moment, a) && SetClock(moment, a + 3, 3) &&
                       SetFraction(moment, a[6], call.type.scale);
    return Made(call, moment, valid);
}

// Hours and minutes of the offset have one sign.
bool SetOffset(Moment& moment, int64_t hours, int64_t minutes) {
    const bool mixed = (hours < 0 && minutes > 0) || (hours > 0 && minutes < 0);
    if (mixed || minutes <= -60 || minutes >= 60 || hours < -14 || hours > 14) return false;
    moment.offset = static_cast<int>(hours * 60 + minutes);
    return std::abs(moment.offset) <= Moment::MaxOffset;
}

SqlValue MakeDateTimeOffset(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    Moment moment;
    const bool valid = SetDate(moment, a) && SetClock(moment, a + 3, 3) &&
                       SetFraction(moment, a[6], call.type.scale) &&
                       SetOffset(moment, a[7].integer, a[8].integer);
    return Made(call, moment, valid);
}

// The last argument is the scale, which the type needs to be a constant.
template <TypeKind Kind, Compute Function>
BoundPtr BindScaledMaker(Arguments arguments) {
    const BoundExpression& scale = *arguments.back();
    const bool known = scale.IsConstant() && ClassOf(scale.type) == TypeClass::Integer;
    const SqlValue value = known ? static_cast<const BoundConstant&>(scale).Value() : SqlValue();
    if (value.IsNull() || value.integer < 0 || value.integer > 7) {
        throw SqlError(10760, {MakeType(Kind).Name()});
    }
    for (BoundPtr& argument : arguments) {
        argument = ExpressionBinder::Convert(std::move(argument), IntType());
    }
    const SqlType type = MakeType(Kind, 0, 0, static_cast<int>(value.integer));
    return MakeCall(Function, type, std::move(arguments));
}

template <TypeKind Kind, Compute Function>
BoundPtr BindMaker(Arguments arguments) {
    for (BoundPtr& argument : arguments) {
        argument = ExpressionBinder::Convert(std::move(argument), IntType());
    }
    return MakeCall(Function, MakeType(Kind), std::move(arguments));
}

SqlValue EndOfMonth(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    Moment moment = MomentOf(a[0], call.parts[0]->type);
    const int64_t months = call.parts.size() > 1 ? a[1].integer : 0;
    if (!DateParts::Add(DatePart::Month, months, moment)) {
        throw SqlError(517, {call.type.Name()});
    }
    moment.day = DateParts::DaysInMonth(moment.year, moment.month);
    return SqlValue::Integer(moment.Days());
}

BoundPtr BindEndOfMonth(Arguments arguments) {
    arguments[0] = AsDate(std::move(arguments[0]), 1, QStringLiteral("eomonth"));
    if (arguments.size() > 1) {
        arguments[1] = ExpressionBinder::Convert(std::move(arguments[1]), IntType());
    }
    return MakeCall(EndOfMonth, MakeType(TypeKind::Date), std::move(arguments));
}

// Whether the text is a datetime: finer values are none.
SqlValue IsDate(const BoundCall&, const SqlValue* a, const Evaluation&) {
    if (a[0].IsNull()) return SqlValue::Integer(0);
    const std::optional<Moment> moment = Moment::Parse(a[0].text);
    const bool isDate = moment && !a[0].text.empty() && moment->Store(TypeKind::DateTime) &&
                        moment->fraction % 10'000 == 0;
    return SqlValue::Integer(isDate);
}

BoundPtr BindIsDate(Arguments arguments) {
    const SqlType type = arguments[0]->type;
    if (ClassOf(type) == TypeClass::Moment) {
        if (type.kind != TypeKind::DateTime && type.kind != TypeKind::SmallDateTime) {
            throw SqlError(8116, {type.Name(), QStringLiteral("1"), QStringLiteral("isdate")});
        }
    }
    arguments[0] = AsText(std::move(arguments[0]));
    return MakeNeverNullCall(IsDate, IntType(), std::move(arguments));
}

// "+hh:mm" or a number of minutes. Nothing where it is none.
std::optional<int> OffsetOf(const SqlValue& value, const SqlType& type) {
    if (ClassOf(type) != TypeClass::Text) {
        if (std::abs(value.integer) > Moment::MaxOffset) return std::nullopt;
        return static_cast<int>(value.integer);
    }
    const std::string_view text = value.text;
    if (text.size() != 6 || text[3] != ':' || (text[0] != '+' && text[0] != '-')) return {};
    int digits = 0;
    for (const size_t place : {1, 2, 4, 5}) {
        if (text[place] < '0' || text[place] > '9') return std::nullopt;
        digits = digits * 10 + (text[place] - '0');
    }
    const int minutes = digits / 100 * 60 + digits % 100;
    if (digits % 100 > 59 || minutes > Moment::MaxOffset) return std::nullopt;
    return text[0] == '-' ? -minutes : minutes;
}

// SWITCHOFFSET keeps the moment, TODATETIMEOFFSET the clock.
template <bool KeepsMoment>
SqlValue WithOffset(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const std::optional<int> offset = OffsetOf(a[1], call.parts[1]->type);
    if (!offset) throw SqlError(9812);
    if (KeepsMoment) {
        SqlValue value = a[0];
        value.offset = static_cast<int16_t>(*offset);
        return value;
    }
    Moment moment = MomentOf(a[0], call.parts[0]->type);
    moment.offset = *offset;
    const std::optional<SqlValue> value = ValueOf(moment, call.type);
    if (!value) throw SqlError(517, {call.type.Name()});
    return *value;
}

template <bool KeepsMoment>
BoundPtr BindWithOffset(Arguments arguments) {
    const SqlType& from = arguments[0]->type;
    const bool moment = ClassOf(from) == TypeClass::Moment && !arguments[0]->untypedNull;
    const int scale = moment && HasTimeScale(from.kind) ? from.scale : 7;
    const SqlType type = MakeType(TypeKind::DateTimeOffset, 0, 0, scale);
    const SqlType first = KeepsMoment ? type : MakeType(TypeKind::DateTime2, 0, 0, scale);
    arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]), first);
    if (ClassOf(arguments[1]->type) != TypeClass::Text) {
        arguments[1] = ExpressionBinder::Convert(std::move(arguments[1]), IntType());
    }
    return MakeCall(WithOffset<KeepsMoment>, type, std::move(arguments));
}

}  // namespace

std::span<const FunctionEntry> DateMakers() {
    static constexpr std::array<FunctionEntry, 10> Table = {{
        {u"timefromparts", 5, 5, BindScaledMaker<TypeKind::Time, MakeTime>},
        {u"datetime2fromparts", 8, 8, BindScaledMaker<TypeKind::DateTime2, MakeDateTime2>},
        {u"datetimeoffsetfromparts", 10, 10,
         BindScaledMaker<TypeKind::DateTimeOffset, MakeDateTimeOffset>},
        {u"switchoffset", 2, 2, BindWithOffset<true>},
        {u"todatetimeoffset", 2, 2, BindWithOffset<false>},
        {u"datefromparts", 3, 3, BindMaker<TypeKind::Date, MakeDate>},
        {u"datetimefromparts", 7, 7, BindMaker<TypeKind::DateTime, MakeDateTime>},
        {u"smalldatetimefromparts", 5, 5, BindMaker<TypeKind::SmallDateTime, MakeSmallDateTime>},
        {u"eomonth", 1, 2, BindEndOfMonth},
        {u"isdate", 1, 1, BindIsDate},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
