#include "localdb/engine/Arithmetic.h"

#include <cmath>

#include "localdb/engine/Collation.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SurrogatePairs.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

bool FitsInteger(Int128 value, TypeKind kind) {
    switch (kind) {
        case TypeKind::Bit:
            return value == 0 || value == 1;
        case TypeKind::TinyInt:
            return value == static_cast<uint8_t>(value);
        case TypeKind::SmallInt:
            return value == static_cast<int16_t>(value);
        case TypeKind::Int:
            return value == static_cast<int32_t>(value);
        default:
            return value == static_cast<int64_t>(value);
    }
}

SqlValue Integers(char16_t sign, Int128 a, Int128 b, const SqlType& result) {
    if ((sign == u'/' || sign == u'%') && b == 0) throw SqlError(8134);
    Int128 value = 0;
    switch (sign) {
        case u'+':
            value = a + b;
            break;
        case u'-':
            value = a - b;
            break;
        case u'*':
            value = a * b;
            break;
        case u'/':
            value = a / b;
            break;
        case u'%':
            value = a % b;
            break;
        case u'&':
            value = a & b;
            break;
        case u'|':
            value = a | b;
            break;
        default:
            value = a ^ b;
    }
    if (!FitsInteger(value, result.kind)) {
        throw SqlError(8115, {QStringLiteral("expression"), result.Name()});
    }
    return SqlValue::Integer(static_cast<int64_t>(value));
}

SqlValue Decimals(char16_t sign, const SqlValue& a, int scaleA, const SqlValue& b, int scaleB,
                  const SqlType& result) {
    if ((sign == u'/' || sign == u'%') && b.wide == 0) throw SqlError(8134);
    const int precision = result.precision, scale = result.scale;
    std::optional<Int128> value;
    switch (sign) {
        case u'+':
            value = DecimalMath::Add(a.wide, scaleA, b.wide, scaleB, precision, scale);
            break;
        case u'-':
            value = DecimalMath::Add(a.wide, scaleA, -b.wide, scaleB, precision, scale);
            break;
        case u'*':
            value = DecimalMath::Multiply(a.wide, scaleA, b.wide, scaleB, precision, scale);
            break;
        case u'/':
            value = DecimalMath::Divide(a.wide, scaleA, b.wide, scaleB, precision, scale);
            break;
        default:
            value = DecimalMath::Remainder(a.wide, scaleA, b.wide, scaleB, precision, scale);
    }
    if (!value) {
        throw SqlError(8115, {QStringLiteral("expression"), QStringLiteral("numeric")});
    }
    return SqlValue::Wide(*value);
}

// Money multiplies and divides in 1/10,000, cutting what lies behind.
SqlValue Moneys(char16_t sign, Int128 a, Int128 b, const SqlType& result) {
    if ((sign == u'/' || sign == u'%') && b == 0) throw SqlError(8134);
    Int128 value = 0;
    switch (sign) {
        case u'+':
            value = a + b;
            break;
        case u'-':
            value = a - b;
            break;
        case u'*':
            value = *DecimalMath::Rescale(a * b, 8, 38, 4);
            break;
        case u'/':
            value = a * 10000 / b;
            break;
        default:
            value = a % b;
    }
    const bool fits = result.kind == TypeKind::Money
                          ? value == static_cast<Int128>(static_cast<int64_t>(value))
                          : value == static_cast<Int128>(static_cast<int32_t>(value));
    if (!fits) throw SqlError(8115, {QStringLiteral("expression"), result.Name()});
    return SqlValue::Integer(static_cast<int64_t>(value));
}

SqlValue Reals(char16_t sign, double a, double b, const SqlType& result) {
    if (sign == u'/' && b == 0) throw SqlError(8134);
    double value = sign == u'+' ? a + b : sign == u'-' ? a - b : sign == u'*' ? a * b : a / b;
    if (result.kind == TypeKind::Real) value = static_cast<double>(static_cast<float>(value));
    if (!std::isfinite(value)) {
        throw SqlError(8115, {QStringLiteral("expression"), result.Name()});
    }
    return SqlValue::Real(value);
}

// datetime counts in 1/300 s, smalldatetime in minutes, both since 1900.
SqlValue Moments(char16_t sign, int64_t a, int64_t b, const SqlType& result) {
    const int64_t value = sign == u'+' ? a + b : a - b;
    const bool small = result.kind == TypeKind::SmallDateTime;
    const int64_t unit = small ? 1440 : 25'920'000;
    const int64_t low = small ? 0 : -53690 * unit;
    const int64_t high = (small ? 65536 : 2958464) * unit;
    if (value < low || value >= high) {
        throw SqlError(8115, {QStringLiteral("expression"), result.Name()});
    }
    return SqlValue::Integer(value);
}

SqlValue Texts(std::string_view a, std::string_view b, const SqlType& result, TextArena& arena) {
    char* joined = arena.Allocate(a.size() + b.size());
    std::copy(a.begin(), a.end(), joined);
    std::copy(b.begin(), b.end(), joined + a.size());
    const SqlType all =
        MakeType(IsUnicode(result.kind) ? TypeKind::NVarChar : TypeKind::VarChar, SqlType::Max);
    // Joined fixed lengths are as long as both; only what is beyond the limit is cut.
    SqlType limit = result;
    if (limit.kind == TypeKind::NChar) limit.kind = TypeKind::NVarChar;
    if (limit.kind == TypeKind::Char) limit.kind = TypeKind::VarChar;
    const std::string_view text = JoinPairs({joined, a.size() + b.size()}, arena);
    return Conversion::Convert(SqlValue::Text(text), all, limit, Conversion::NoStyle, arena);
}

// Cut where they are longer than a value may be.
SqlValue Bytes(std::string_view a, std::string_view b, const SqlType& result, TextArena& arena) {
    char* joined = arena.Allocate(a.size() + b.size());
    std::copy(a.begin(), a.end(), joined);
    std::copy(b.begin(), b.end(), joined + a.size());
    const std::string_view all(joined, a.size() + b.size());
    return SqlValue::Bytes(
        result.length == SqlType::Max ? all : all.substr(0, static_cast<size_t>(result.length)));
}

}  // namespace

SqlValue Arithmetic::Apply(char16_t sign, const SqlValue& a, const SqlType& typeA,
                           const SqlValue& b, const SqlType& typeB, const SqlType& result,
                           TextArena& arena) {
    if (a.IsNull() || b.IsNull()) return {};
    switch (ClassOf(result)) {
        case TypeClass::Integer:
            return Integers(sign, a.integer, b.integer, result);
        case TypeClass::Decimal:
            return Decimals(sign, a, typeA.scale, b, typeB.scale, result);
        case TypeClass::Money:
            return Moneys(sign, a.integer, b.integer, result);
        case TypeClass::Real:
            return Reals(sign, a.real, b.real, result);
        case TypeClass::Text:
            return Texts(a.text, b.text, result, arena);
        case TypeClass::Binary:
            return Bytes(a.text, b.text, result, arena);
        default:
            return Moments(sign, a.integer, b.integer, result);
    }
}

SqlValue Arithmetic::Negate(char16_t sign, const SqlValue& a, const SqlType& type) {
    if (a.IsNull() || sign == u'+') return a;
    if (sign == u'~') {
        return SqlValue::Integer(type.kind == TypeKind::Bit ? !a.integer : ~a.integer);
    }
    switch (a.kind) {
        case SqlValue::Kind::Wide:
            return SqlValue::Wide(-a.wide);
        case SqlValue::Kind::Real:
            return SqlValue::Real(-a.real);
        default:
            return ClassOf(type) == TypeClass::Money ? Moneys(u'-', 0, a.integer, type)
                                                     : Integers(u'-', 0, a.integer, type);
    }
}

// The shorter counts as filled up with zeros.
static int CompareBytes(std::string_view a, std::string_view b) {
    const size_t common = std::min(a.size(), b.size());
    const int order = a.substr(0, common).compare(b.substr(0, common));
    if (order != 0) return order;
    const std::string_view rest = a.size() > b.size() ? a.substr(common) : b.substr(common);
    if (rest.find_first_not_of('\0') == std::string_view::npos) return 0;
    return a.size() > b.size() ? 1 : -1;
}

int CompareValues(const SqlValue& a, const SqlValue& b, TextOrder order) {
    switch (a.kind) {
        case SqlValue::Kind::Integer:
            return a.integer < b.integer ? -1 : a.integer > b.integer ? 1 : 0;
        case SqlValue::Kind::Real:
            return a.real < b.real ? -1 : a.real > b.real ? 1 : 0;
        case SqlValue::Kind::Wide:
            return a.wide < b.wide ? -1 : a.wide > b.wide ? 1 : 0;
        case SqlValue::Kind::Bytes:
            return CompareBytes(a.text, b.text);
        case SqlValue::Kind::Text:
            return Collation::Compare(a.text, b.text, order);
        default:
            return 0;
    }
}

}  // namespace quarv::localdb::engine
