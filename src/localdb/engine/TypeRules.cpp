#include "localdb/engine/TypeRules.h"

#include <algorithm>

#include "localdb/engine/ConversionTable.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

constexpr int MaxDigits = 38;

SqlType DecimalOf(int precision, int scale) {
    return MakeType(TypeKind::Numeric, 0, precision, scale);
}

// Where a sum, difference or common type needs more than 38 digits, the scale gives way.
SqlType FitSum(int whole, int scale, int extra) {
    const int precision = std::min(whole + scale + extra, MaxDigits);
    return DecimalOf(precision, std::min(scale, precision - std::min(whole, precision)));
}

// Where a product or quotient needs more than 38 digits, the scale gives way, but not below 6.
SqlType FitProduct(int precision, int scale) {
    if (precision <= MaxDigits) return DecimalOf(precision, scale);
    const int whole = precision - scale;
    if (whole < 32) return DecimalOf(MaxDigits, std::min(scale, MaxDigits - whole));
    return DecimalOf(MaxDigits, std::min(scale, 6));
}

SqlType OfDecimals(char16_t sign, const SqlType& a, const SqlType& b) {
    const int p1 = a.precision, s1 = a.scale, p2 = b.precision, s2 = b.scale;
    switch (sign) {
        case u'*':
            return FitProduct(p1 + p2 + 1, s1 + s2);
        case u'/': {
            const int scale = std::max(6, s1 + p2 + 1);
            return FitProduct(p1 - s1 + s2 + scale, scale);
        }
        case u'%': {
            const int scale = std::max(s1, s2);
            return DecimalOf(std::min(std::min(p1 - s1, p2 - s2) + scale, MaxDigits), scale);
        }
        default:
            return FitSum(std::max(p1 - s1, p2 - s2), std::max(s1, s2), 1);
    }
}

SqlType CommonText(const SqlType& a, const SqlType& b, bool concatenate) {
    const auto keeps = [](const SqlType& type) {
        return IsOldLong(type.kind) || type.kind == TypeKind::Xml;
    };
    if (keeps(a) || keeps(b)) {
        return FactsOf(a.kind).precedence <= FactsOf(b.kind).precedence ? a : b;
    }
    const bool unicode = IsUnicode(a.kind) || IsUnicode(b.kind);
    const bool fixed = IsFixedLength(a.kind) && IsFixedLength(b.kind);
    const TypeKind kind = unicode ? (fixed ? TypeKind::NChar : TypeKind::NVarChar)
                                  : (fixed ? TypeKind::Char : TypeKind::VarChar);
    if (a.length == SqlType::Max || b.length == SqlType::Max) {
        return MakeType(unicode ? TypeKind::NVarChar : TypeKind::VarChar, SqlType::Max);
    }
    const int length = concatenate ? a.length + b.length : std::max(a.length, b.length);
    return MakeType(kind, std::min(length, unicode ? 4000 : 8000));
}

SqlType CommonBinary(const SqlType& a, const SqlType& b, bool concatenate) {
    const bool aWins = FactsOf(a.kind).precedence <= FactsOf(b.kind).precedence;
    const SqlType& winner = aWins ? a : b;
    if (!concatenate && (winner.kind == TypeKind::Image || winner.kind == TypeKind::RowVersion)) {
        return winner;
    }
    if (a.length == SqlType::Max || b.length == SqlType::Max) {
        return MakeType(TypeKind::VarBinary, SqlType::Max);
    }
    const int x = ByteLength(a), y = ByteLength(b);
    const bool fixed = a.kind == TypeKind::Binary && b.kind == TypeKind::Binary;
    return MakeType(fixed ? TypeKind::Binary : TypeKind::VarBinary,
                    std::min(concatenate ? x + y : std::max(x, y), 8000));
}

// The higher kind, with as many digits of a second as either has.
SqlType CommonMoment(const SqlType& a, const SqlType& b) {
    const bool aWins = FactsOf(a.kind).precedence <= FactsOf(b.kind).precedence;
    SqlType winner = aWins ? a : b;
    const int scale = std::max(ScaleOf(a), ScaleOf(b));
    if (HasTimeScale(winner.kind)) winner.scale = static_cast<uint8_t>(scale);
    return winner;
}

const char16_t* OperatorName(char16_t sign) {
    switch (sign) {
        case u'+':
            return u"add";
        case u'-':
            return u"subtract";
        case u'*':
            return u"multiply";
        case u'/':
            return u"divide";
        case u'%':
            return u"modulo";
        case u'&':
            return u"'&'";
        case u'|':
            return u"'|'";
        default:
            return u"'^'";
    }
}

[[noreturn]] void RefuseOperand(const SqlType& type, char16_t sign) {
    throw SqlError(8117, {type.Name(), QString::fromUtf16(OperatorName(sign))});
}

[[noreturn]] void Clash(const SqlType& a, const SqlType& b, char16_t sign) {
    throw SqlError(402, {a.Name(), b.Name(), QString::fromUtf16(OperatorName(sign))});
}

bool IsOldMoment(const SqlType& type) {
    return type.kind == TypeKind::DateTime || type.kind == TypeKind::SmallDateTime;
}

SqlType OfBits(char16_t sign, const SqlType& a, const SqlType& b) {
    for (const SqlType& type : {a, b}) {
        const TypeClass cls = ClassOf(type);
        if (cls != TypeClass::Integer && cls != TypeClass::Text && cls != TypeClass::Binary) {
            RefuseOperand(type, sign);
        }
    }
    if (ClassOf(a) == TypeClass::Binary && ClassOf(b) == TypeClass::Binary) Clash(a, b, sign);
    const SqlType common = TypeRules::Common(a, b);
    return ClassOf(common) == TypeClass::Integer ? common : IntType();
}

// The old kinds add and subtract, also with numbers; the others with nothing.
SqlType OfMoment(char16_t sign, const SqlType& a, const SqlType& b) {
    const bool both = ClassOf(a) == TypeClass::Moment && ClassOf(b) == TypeClass::Moment;
    if (both && a.kind == b.kind && !IsOldMoment(a)) RefuseOperand(a, sign);
    if (both && !(IsOldMoment(a) && IsOldMoment(b))) Clash(a, b, sign);
    const SqlType& moment = ClassOf(a) == TypeClass::Moment ? a : b;
    const SqlType& other = &moment == &a ? b : a;
    if (!IsOldMoment(moment)) {
        if (ClassOf(other) == TypeClass::Text) Clash(a, b, sign);
        throw SqlError(206, {moment.Name(), other.Name()});
    }
    const SqlType common = TypeRules::Common(a, b);
    if (sign != u'+' && sign != u'-') RefuseOperand(common, sign);
    return common;
}

// Bytes join; a uniqueidentifier takes part in nothing.
SqlType OfBinary(char16_t sign, const SqlType& a, const SqlType& b) {
    for (const SqlType& type : {a, b}) {
        const SqlType& other = type == a ? b : a;
        if (ClassOf(type) != TypeClass::Guid) continue;
        if (other.kind == type.kind) RefuseOperand(type, sign);
        if (IsNumber(other)) throw SqlError(206, {type.Name(), other.Name()});
        Clash(a, b, sign);
    }
    if (ClassOf(a) != ClassOf(b)) Clash(a, b, sign);
    if (a.kind == TypeKind::Image || b.kind == TypeKind::Image) Clash(a, b, sign);
    if (sign != u'+') RefuseOperand(a, sign);
    return CommonBinary(a, b, true);
}

}  // namespace

SqlType TypeRules::AsDecimal(const SqlType& type) {
    if (ClassOf(type) == TypeClass::Decimal) return type;
    return DecimalOf(PrecisionOf(type), ScaleOf(type));
}

SqlType TypeRules::Common(const SqlType& a, const SqlType& b) {
    const TypeClass x = ClassOf(a), y = ClassOf(b);
    if (x == TypeClass::Text && y == TypeClass::Text) return CommonText(a, b, false);
    if (x == TypeClass::Binary && y == TypeClass::Binary) return CommonBinary(a, b, false);
    if (x == TypeClass::Moment && y == TypeClass::Moment) return CommonMoment(a, b);
    const bool aWins = FactsOf(a.kind).precedence <= FactsOf(b.kind).precedence;
    const SqlType& winner = aWins ? a : b;
    const SqlType& other = aWins ? b : a;
    // Text beside a decimal takes the decimal's own precision and scale.
    if (ClassOf(winner) != TypeClass::Decimal || ClassOf(other) == TypeClass::Text) return winner;
    const SqlType d = AsDecimal(other);
    SqlType common = FitSum(std::max(winner.precision - winner.scale, d.precision - d.scale),
                            std::max(winner.scale, d.scale), 0);
    common.kind = winner.kind;
    return common;
}

SqlType TypeRules::OfArithmetic(char16_t sign, const SqlType& a, const SqlType& b) {
    const TypeClass x = ClassOf(a), y = ClassOf(b);
    if (x == TypeClass::Text && y == TypeClass::Text) {
        const bool joins = sign == u'+' && !IsOldLong(a.kind) && !IsOldLong(b.kind) &&
                           a.kind != TypeKind::Xml && b.kind != TypeKind::Xml;
        if (!joins) Clash(a, b, sign);
        return CommonText(a, b, true);
    }
    if (sign == u'&' || sign == u'|' || sign == u'^') return OfBits(sign, a, b);
    if (x == TypeClass::Moment || y == TypeClass::Moment) return OfMoment(sign, a, b);
    const bool bytes = x >= TypeClass::Binary && !IsNumber(b);
    if (bytes || y == TypeClass::Guid || (y == TypeClass::Binary && !IsNumber(a)) ||
        x == TypeClass::Guid) {
        return OfBinary(sign, a, b);
    }
    const SqlType common = Common(a, b);
    if (common.kind == TypeKind::Bit) RefuseOperand(common, sign);
    if (ClassOf(common) == TypeClass::Decimal) {
        const SqlType left = x == TypeClass::Text ? common : AsDecimal(a);
        const SqlType right = y == TypeClass::Text ? common : AsDecimal(b);
        return OfDecimals(sign, left, right);
    }
    if (ClassOf(common) == TypeClass::Real && sign == u'%') RefuseOperand(common, sign);
    return common;
}

void TypeRules::CheckConversion(const SqlType& from, const SqlType& to, bool isExplicit) {
    const ConversionKind kind = ConversionOf(from.kind, to.kind);
    if (kind == ConversionKind::Implicit) return;
    if (kind == ConversionKind::Explicit && isExplicit) return;
    if (isExplicit) throw SqlError(529, {from.Name(), to.Name()});
    throw SqlError(kind == ConversionKind::Explicit ? 257 : 206, {from.Name(), to.Name()});
}

void TypeRules::CheckComparison(const char16_t* sign, const SqlType& a, const SqlType& b) {
    if (a.kind == TypeKind::Xml && b.kind == TypeKind::Xml) throw SqlError(305);
    for (const SqlType& type : {a, b}) {
        if (!IsOldLong(type.kind) && type.kind != TypeKind::Xml) continue;
        throw SqlError(402, {a.Name(), b.Name(), QString::fromUtf16(sign)});
    }
    const bool moments = ClassOf(a) == TypeClass::Moment && ClassOf(b) == TypeClass::Moment;
    if (moments && ConversionOf(a.kind, b.kind) == ConversionKind::None) {
        throw SqlError(402, {a.Name(), b.Name(), QString::fromUtf16(sign)});
    }
}

void TypeRules::CheckComparable(const SqlType& type, int number) {
    if (type.kind == TypeKind::Xml || IsOldLong(type.kind)) throw SqlError(number, {type.Name()});
}

void TypeRules::CheckOrder(const SqlType& type) {
    if (type.kind == TypeKind::Xml) throw SqlError(305);
    if (IsOldLong(type.kind)) throw SqlError(306);
}

}  // namespace quarv::localdb::engine
