#include <algorithm>
#include <array>
#include <cmath>

#include "localdb/engine/Arithmetic.h"
#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeRules.h"

namespace quarv::localdb::engine {

namespace {

// A number as the numeric functions take it: text as float, small integers as int.
BoundPtr AsNumber(BoundPtr value, const char16_t* function) {
    switch (ClassOf(value->type)) {
        case TypeClass::Integer:
            if (value->type.kind == TypeKind::BigInt || value->type.kind == TypeKind::Int)
                return value;
            if (value->type.kind == TypeKind::Bit) {
                return ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::Float));
            }
            return ExpressionBinder::Convert(std::move(value), IntType());
        case TypeClass::Text:
            return ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::Float));
        case TypeClass::Money:
            return ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::Money));
        case TypeClass::Real:
            return ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::Float));
        case TypeClass::Decimal:
            return value;
        default:
            throw SqlError(8116,
                           {value->type.Name(), QStringLiteral("1"), QString::fromUtf16(function)});
    }
}

SqlValue Abs(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const bool negative = a[0].integer < 0 || a[0].real < 0 || a[0].wide < 0;
    return negative ? Arithmetic::Negate(u'-', a[0], call.type) : a[0];
}

BoundPtr BindAbs(Arguments arguments) {
    arguments[0] = AsNumber(std::move(arguments[0]), u"abs");
    const SqlType type = arguments[0]->type;
    return MakeCall(Abs, type, std::move(arguments));
}

// The next whole number below (-1) or above (1).
template <int Direction>
SqlValue ToWhole(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const SqlType& from = call.parts[0]->type;
    if (a[0].kind == SqlValue::Kind::Real) {
        return SqlValue::Real(Direction < 0 ? std::floor(a[0].real) : std::ceil(a[0].real));
    }
    const bool money = ClassOf(from) == TypeClass::Money;
    if (ClassOf(from) == TypeClass::Integer) return a[0];
    const Int128 unit = DecimalMath::PowerOfTen(money ? 4 : from.scale);
    const Int128 value = money ? Int128{a[0].integer} : a[0].wide;
    Int128 whole = value / unit;
    if (value % unit != 0 && (value > 0) == (Direction > 0)) whole += Direction;
    if (money) return SqlValue::Integer(static_cast<int64_t>(whole * unit));
    return SqlValue::Wide(whole);
}

template <int Direction>
BoundPtr BindToWhole(Arguments arguments) {
    arguments[0] = AsNumber(std::move(arguments[0]), Direction < 0 ? u"floor" : u"ceiling");
    SqlType type = arguments[0]->type;
    if (ClassOf(type) == TypeClass::Decimal) type.scale = 0;
    return MakeCall(ToWhole<Direction>, type, std::move(arguments));
}

Int128 RoundTo(Int128 value, int scale, int64_t places, bool cut) {
    if (places >= scale) return value;
    const int64_t digits = scale - places;
    if (digits > 38) return 0;
    const Int128 unit = DecimalMath::PowerOfTen(static_cast<int>(digits));
    const Int128 rest = value % unit;
    value -= rest;
    const Int128 magnitude = rest < 0 ? -rest : rest;
    if (!cut && magnitude >= unit - magnitude) value += rest < 0 ? -unit : unit;
    return value;
}

SqlValue Round(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const int64_t places = a[1].integer;
    const bool cut = call.parts.size() > 2 && a[2].integer != 0;
    switch (ClassOf(call.type)) {
        case TypeClass::Real: {
            if (places > 300 || places < -300) return places > 0 ? a[0] : SqlValue::Real(0);
            const double unit = std::pow(10.0, static_cast<double>(places));
            const double scaled = a[0].real * unit;
            return SqlValue::Real((cut ? std::trunc(scaled) : std::round(scaled)) / unit);
        }
        case TypeClass::Decimal: {
            const Int128 value = RoundTo(a[0].wide, call.type.scale, places, cut);
            const Int128 limit = DecimalMath::PowerOfTen(call.type.precision);
            if (value >= limit || value <= -limit) {
                throw SqlError(8115, {QStringLiteral("expression"), QStringLiteral("numeric")});
            }
            return SqlValue::Wide(value);
        }
        default: {
            const int scale = ClassOf(call.type) == TypeClass::Money ? 4 : 0;
            const Int128 value = RoundTo(a[0].integer, scale, places, cut);
            const bool narrow = call.type.kind == TypeKind::Int;
            const bool fits = narrow ? value == static_cast<int32_t>(value)
                                     : value == static_cast<int64_t>(value);
            if (!fits) throw SqlError(8115, {QStringLiteral("expression"), call.type.Name()});
            return SqlValue::Integer(static_cast<int64_t>(value));
        }
    }
}

BoundPtr BindRound(Arguments arguments) {
    arguments[0] = AsNumber(std::move(arguments[0]), u"round");
    for (size_t i = 1; i < arguments.size(); ++i) {
        arguments[i] =
            ExpressionBinder::Convert(std::move(arguments[i]), MakeType(TypeKind::BigInt));
    }
    const SqlType type = arguments[0]->type;
    return MakeCall(Round, type, std::move(arguments));
}

}  // namespace

std::span<const FunctionEntry> NumberFunctions() {
    static constexpr std::array<FunctionEntry, 4> Table = {{
        {u"abs", 1, 1, BindAbs},
        {u"floor", 1, 1, BindToWhole<-1>},
        {u"ceiling", 1, 1, BindToWhole<1>},
        {u"round", 2, 3, BindRound},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
