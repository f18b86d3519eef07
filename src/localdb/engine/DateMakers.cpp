// The functions that make dates out of numbers, EOMONTH and ISDATE.
#include <array>

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
    BoundPtr call = MakeCall(IsDate, IntType(), std::move(arguments), true);
    call->nullable = false;
    return call;
}

}  // namespace

std::span<const FunctionEntry> DateMakers() {
    static constexpr std::array<FunctionEntry, 5> Table = {{
        {u"datefromparts", 3, 3, BindMaker<TypeKind::Date, MakeDate>},
        {u"datetimefromparts", 7, 7, BindMaker<TypeKind::DateTime, MakeDateTime>},
        {u"smalldatetimefromparts", 5, 5, BindMaker<TypeKind::SmallDateTime, MakeSmallDateTime>},
        {u"eomonth", 1, 2, BindEndOfMonth},
        {u"isdate", 1, 1, BindIsDate},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
