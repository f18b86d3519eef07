// POWER, SQRT, the logarithms and angles, SIGN, RAND: the functions that compute with floats.
#include <array>
#include <cmath>
#include <numbers>
#include <optional>

#include "localdb/engine/Conversion.h"
#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"

namespace quarv::localdb::engine {

namespace {

[[noreturn]] void FloatOverflow() {
    throw SqlError(8115, {QStringLiteral("expression"), QStringLiteral("float")});
}

// What no number is raises; so does what is too large.
SqlValue Checked(double result) {
    if (std::isnan(result)) throw SqlError(3623);
    if (std::isinf(result)) FloatOverflow();
    return SqlValue::Real(result);
}

using RealFunction = double (*)(double);

template <RealFunction Function>
SqlValue OfReal(const BoundCall&, const SqlValue* a, const Evaluation&) {
    return Checked(Function(a[0].real));
}

template <RealFunction Function>
BoundPtr BindReal(Arguments arguments) {
    arguments[0] = AsFloat(std::move(arguments[0]));
    return MakeCall(OfReal<Function>, MakeType(TypeKind::Float), std::move(arguments));
}

double SquareOf(double value) {
    return value * value;
}
double SquareRoot(double value) {
    return std::sqrt(value);
}
double Exponential(double value) {
    return std::exp(value);
}
// The logarithm of zero is no number here, not minus infinity.
double DecimalLog(double value) {
    return value > 0 ? std::log10(value) : std::nan("");
}
double Sine(double value) {
    return std::sin(value);
}
double Cosine(double value) {
    return std::cos(value);
}
double Tangent(double value) {
    return std::tan(value);
}
double Cotangent(double value) {
    return value == 0 ? std::nan("") : 1 / std::tan(value);
}
double ArcSine(double value) {
    return std::asin(value);
}
double ArcCosine(double value) {
    return std::acos(value);
}
double ArcTangent(double value) {
    return std::atan(value);
}

SqlValue Log(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    if (a[0].real <= 0) throw SqlError(3623);
    if (call.parts.size() == 1) return Checked(std::log(a[0].real));
    if (a[1].real <= 0 || a[1].real == 1) throw SqlError(3623);
    if (a[1].real == 2) return Checked(std::log2(a[0].real));
    if (a[1].real == 10) return Checked(std::log10(a[0].real));
    return Checked(std::log(a[0].real) / std::log(a[1].real));
}

SqlValue ArcTangent2(const BoundCall&, const SqlValue* a, const Evaluation&) {
    return Checked(std::atan2(a[0].real, a[1].real));
}

template <Compute Function>
BoundPtr BindReals(Arguments arguments) {
    for (BoundPtr& argument : arguments) argument = AsFloat(std::move(argument));
    return MakeCall(Function, MakeType(TypeKind::Float), std::move(arguments));
}

BoundPtr BindPi(Arguments) {
    return std::make_unique<BoundConstant>(SqlValue::Real(std::numbers::pi),
                                           MakeType(TypeKind::Float));
}

// The type that POWER, SIGN and the angles have for an argument: text and bit count as floats.
SqlType ResultOf(const BoundExpression& argument, const char16_t* function) {
    const SqlType& type = argument.type;
    if (argument.untypedNull) return MakeType(TypeKind::Float);
    switch (ClassOf(type)) {
        case TypeClass::Integer:
            if (type.kind == TypeKind::Bit) return MakeType(TypeKind::Float);
            return type.kind == TypeKind::BigInt ? type : IntType();
        case TypeClass::Decimal:
            return MakeType(TypeKind::Numeric, 0, 38, type.scale);
        case TypeClass::Money:
            return MakeType(TypeKind::Money);
        case TypeClass::Real:
        case TypeClass::Text:
            return MakeType(TypeKind::Float);
        default:
            throw SqlError(8116, {type.Name(), QStringLiteral("1"), QString::fromUtf16(function)});
    }
}

// A computed float as the call's type; whole numbers lose their fraction.
SqlValue AsResult(const BoundCall& call, double result, const Evaluation& evaluation) {
    return Conversion::Convert(Checked(result), MakeType(TypeKind::Float), call.type,
                               Conversion::NoStyle, *evaluation.arena);
}

// Of whole numbers, exactly, for as long as a bigint holds it.
std::optional<int64_t> WholePower(int64_t base, double exponent) {
    if (exponent < 0 || exponent > 64 || exponent != std::floor(exponent)) return std::nullopt;
    int64_t result = 1;
    for (int i = 0; i < static_cast<int>(exponent); ++i) {
        if (__builtin_mul_overflow(result, base, &result)) return std::nullopt;
    }
    return result;
}

SqlValue Power(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const SqlType& from = call.parts[0]->type;
    if (ClassOf(from) == TypeClass::Integer) {
        const std::optional<int64_t> whole = WholePower(a[0].integer, a[1].real);
        const bool narrow = call.type.kind == TypeKind::Int;
        if (whole && (!narrow || *whole == static_cast<int32_t>(*whole))) {
            return SqlValue::Integer(*whole);
        }
    }
    const double base = Conversion::Convert(a[0], from, MakeType(TypeKind::Float),
                                            Conversion::NoStyle, *evaluation.arena)
                            .real;
    if (base == 0 && a[1].real < 0) throw SqlError(8134);
    return AsResult(call, std::pow(base, a[1].real), evaluation);
}

BoundPtr BindPower(Arguments arguments) {
    const SqlType type = ResultOf(*arguments[0], u"power");
    arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]), type);
    arguments[1] = AsFloat(std::move(arguments[1]));
    return MakeCall(Power, type, std::move(arguments));
}

SqlValue Sign(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const bool negative = a[0].integer < 0 || a[0].real < 0 || a[0].wide < 0;
    const bool positive = a[0].integer > 0 || a[0].real > 0 || a[0].wide > 0;
    const int sign = negative ? -1 : positive ? 1 : 0;
    switch (ClassOf(call.type)) {
        case TypeClass::Real:
            return SqlValue::Real(sign);
        case TypeClass::Decimal: {
            Int128 unit = 1;
            for (int i = 0; i < call.type.scale; ++i) unit *= 10;
            return SqlValue::Wide(unit * sign);
        }
        case TypeClass::Money:
            return SqlValue::Integer(int64_t{sign} * 10000);
        default:
            return SqlValue::Integer(sign);
    }
}

BoundPtr BindSign(Arguments arguments) {
    SqlType type = ResultOf(*arguments[0], u"sign");
    if (ClassOf(type) == TypeClass::Decimal) type.precision = arguments[0]->type.precision;
    // A number below one has no room for the sign's one.
    if (type.precision == type.scale && ClassOf(type) == TypeClass::Decimal) type.precision = 38;
    arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]), type);
    return MakeCall(Sign, type, std::move(arguments));
}

constexpr double DegreesInRadian = 180 / std::numbers::pi;

template <bool ToDegrees>
SqlValue Angle(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const double factor = ToDegrees ? DegreesInRadian : 1 / DegreesInRadian;
    return AsResult(call, a[0].real * factor, evaluation);
}

template <bool ToDegrees>
BoundPtr BindAngle(Arguments arguments) {
    SqlType type = ResultOf(*arguments[0], ToDegrees ? u"degrees" : u"radians");
    // Whole decimals would lose everything behind the point.
    if (ClassOf(type) == TypeClass::Decimal && type.scale < 18) type.scale = 18;
    arguments[0] = AsFloat(std::move(arguments[0]));
    return MakeCall(Angle<ToDegrees>, type, std::move(arguments));
}

// Without a seed the same for every row of a statement, as it is asked for once.
SqlValue Random(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    std::optional<int64_t> seed;
    if (!call.parts.empty()) seed = a[0].integer;
    return SqlValue::Real(evaluation.environment->Random(seed));
}

// One number for all rows of a query: the storage gets it as a value beside the columns.
class OncePerQuery : public BoundExpression {
  public:
    explicit OncePerQuery(BoundPtr call) {
        type = call->type;
        nullable = call->nullable;
        parts.push_back(std::move(call));
    }
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        const bool given = written_ && evaluation.leaves;
        return given ? evaluation.leaves[slot] : parts[0]->Evaluate(evaluation);
    }
    void Write(SqlWriter& writer) const override {
        written_ = true;
        writer.Expression(*parts[0]);
    }
    bool IsOncePerQuery() const override { return true; }
    bool IsDeterministic() const override { return false; }

  private:
    mutable bool written_ = false;
};

BoundPtr BindRand(Arguments arguments) {
    if (!arguments.empty()) {
        arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]), IntType());
    }
    const bool seeded = !arguments.empty();
    BoundPtr call = MakeCall(Random, MakeType(TypeKind::Float), std::move(arguments));
    if (seeded) return call;
    return std::make_unique<OncePerQuery>(std::move(call));
}

}  // namespace

std::span<const FunctionEntry> MathFunctions() {
    static constexpr std::array<FunctionEntry, 19> Table = {{
        {u"square", 1, 1, BindReal<SquareOf>},
        {u"sqrt", 1, 1, BindReal<SquareRoot>},
        {u"exp", 1, 1, BindReal<Exponential>},
        {u"log", 1, 2, BindReals<Log>},
        {u"log10", 1, 1, BindReal<DecimalLog>},
        {u"sin", 1, 1, BindReal<Sine>},
        {u"cos", 1, 1, BindReal<Cosine>},
        {u"tan", 1, 1, BindReal<Tangent>},
        {u"cot", 1, 1, BindReal<Cotangent>},
        {u"asin", 1, 1, BindReal<ArcSine>},
        {u"acos", 1, 1, BindReal<ArcCosine>},
        {u"atan", 1, 1, BindReal<ArcTangent>},
        {u"atn2", 2, 2, BindReals<ArcTangent2>},
        {u"pi", 0, 0, BindPi},
        {u"power", 2, 2, BindPower},
        {u"sign", 1, 1, BindSign},
        {u"degrees", 1, 1, BindAngle<true>},
        {u"radians", 1, 1, BindAngle<false>},
        {u"rand", 0, 1, BindRand},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
