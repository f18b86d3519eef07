#include "localdb/engine/TypeRules.h"

#include <algorithm>

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

SqlType OfBits(char16_t sign, const SqlType& a, const SqlType& b) {
    for (const SqlType& type : {a, b}) {
        if (ClassOf(type) != TypeClass::Integer && ClassOf(type) != TypeClass::Text) {
            RefuseOperand(type, sign);
        }
    }
    const SqlType common = TypeRules::Common(a, b);
    return ClassOf(common) == TypeClass::Integer ? common : IntType();
}

SqlType OfMoment(char16_t sign, const SqlType& a, const SqlType& b) {
    const bool sum = sign == u'+' || sign == u'-';
    for (const SqlType& type : {a, b}) {
        if (ClassOf(type) != TypeClass::Moment) continue;
        if (!sum || type.kind == TypeKind::Date) {
            throw SqlError(402, {a.Name(), b.Name(), QString::fromUtf16(OperatorName(sign))});
        }
    }
    return TypeRules::Common(a, b);
}

}  // namespace

SqlType TypeRules::AsDecimal(const SqlType& type) {
    if (ClassOf(type) == TypeClass::Decimal) return type;
    return DecimalOf(PrecisionOf(type), ScaleOf(type));
}

SqlType TypeRules::Common(const SqlType& a, const SqlType& b) {
    const TypeClass x = ClassOf(a), y = ClassOf(b);
    if (x == TypeClass::Text && y == TypeClass::Text) return CommonText(a, b, false);
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
        if (sign != u'+') {
            throw SqlError(402, {a.Name(), b.Name(), QString::fromUtf16(OperatorName(sign))});
        }
        return CommonText(a, b, true);
    }
    if (sign == u'&' || sign == u'|' || sign == u'^') return OfBits(sign, a, b);
    if (x == TypeClass::Moment || y == TypeClass::Moment) return OfMoment(sign, a, b);
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
    const TypeClass a = ClassOf(from), b = ClassOf(to);
    if (a == b || (a != TypeClass::Moment && b != TypeClass::Moment)) return;
    if (a == TypeClass::Text || b == TypeClass::Text) return;
    // Between numbers and moments: never for date, from a moment only where it is asked for.
    if (from.kind == TypeKind::Date || to.kind == TypeKind::Date) {
        throw SqlError(isExplicit ? 529 : 206, {from.Name(), to.Name()});
    }
    if (a == TypeClass::Moment && !isExplicit) throw SqlError(257, {from.Name(), to.Name()});
}

}  // namespace quarv::localdb::engine
