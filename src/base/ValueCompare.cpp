// The ordinary comparison of Values, apart from Value.cpp because it is a subject of its own.
#include <algorithm>
#include <array>
#include <cmath>

#include "base/Value.h"

namespace quarv {

namespace {

using Order = std::partial_ordering;
using Kind = Value::Kind;

// The families within which values are ordered.
enum class Family : quint8 { Nothing, Number, Text, DateTime, Bytes, Object, None };

Family FamilyOf(Kind kind) {
    constexpr std::array Families{
        Family::Nothing,   // Empty
        Family::None,      // Null
        Family::Number,    // Boolean
        Family::Number,    // Integer
        Family::Number,    // Single
        Family::Number,    // Floating
        Family::Number,    // Decimal
        Family::Text,      // Text
        Family::DateTime,  // DateTime
        Family::Bytes,     // Bytes
        Family::Object,    // Object
    };
    return Families[static_cast<size_t>(kind)];
}

bool IsFloat(const Value& value) {
    return value.kind() == Kind::Single || value.kind() == Kind::Floating;
}

Order FromSign(int sign) {
    return sign <=> 0;
}

Decimal ExactNumber(const Value& value) {
    if (value.kind() == Kind::Decimal) return value.AsDecimal();
    const qint64 number = value.ToInteger();
    const auto bits = static_cast<quint64>(number);
    return {number < 0 ? 0 - bits : bits, 0, number < 0};
}

// Exact where converting the integer to a double would round it.
Order CompareIntegerToFloat(qint64 integer, double number) {
    constexpr double Limit = 9223372036854775808.0;  // 2^63
    if (std::isnan(number)) return Order::unordered;
    if (number >= Limit) return Order::less;
    if (number < -Limit) return Order::greater;
    const auto whole = static_cast<qint64>(number);
    if (integer != whole) return integer <=> whole;
    return 0.0 <=> (number - static_cast<double>(whole));
}

Order Reverse(Order order) {
    return 0 <=> order;
}

Order CompareNumbers(const Value& a, const Value& b) {
    if (a.kind() == Kind::Integer && b.kind() == Kind::Integer) {
        return a.ToInteger() <=> b.ToInteger();
    }
    if (!IsFloat(a) && !IsFloat(b)) {
        return FromSign(Decimal::Compare(ExactNumber(a), ExactNumber(b)));
    }
    // Beside a float an exact decimal counts as the float nearest to it: 0.1 equals 0.1.
    const bool decimal = a.kind() == Kind::Decimal || b.kind() == Kind::Decimal;
    if (decimal || (IsFloat(a) && IsFloat(b))) return a.ToDouble() <=> b.ToDouble();
    return IsFloat(b) ? CompareIntegerToFloat(a.ToInteger(), b.ToDouble())
                      : Reverse(CompareIntegerToFloat(b.ToInteger(), a.ToDouble()));
}

Order CompareTexts(QStringView a, QStringView b) {
    return FromSign(a.compare(b, Qt::CaseSensitive));
}

Order CompareBytes(const QByteArray& a, const QByteArray& b) {
    return FromSign(a.compare(b));
}

Order CompareObjects(const ObjectRef& a, const ObjectRef& b) {
    return a == b ? Order::equivalent : Order::unordered;
}

}  // namespace

std::partial_ordering Value::Compare(const Value& a, const Value& b) {
    Family familyA = FamilyOf(a.kind());
    Family familyB = FamilyOf(b.kind());
    if (familyA == Family::Nothing && familyB == Family::Nothing) return Order::equivalent;
    if (familyA == Family::Nothing) {
        if (familyB == Family::Number) return CompareNumbers(Value(0), b);
        return familyB == Family::Text ? CompareTexts({}, b.Text()) : Order::unordered;
    }
    if (familyB == Family::Nothing) return Reverse(Compare(b, a));
    if (familyA == Family::Number && familyB == Family::Text) return Order::less;
    if (familyA == Family::Text && familyB == Family::Number) return Order::greater;
    if (familyA != familyB) return Order::unordered;
    switch (familyA) {
        case Family::Number:
            return CompareNumbers(a, b);
        case Family::Text:
            return CompareTexts(a.Text(), b.Text());
        case Family::DateTime:
            return DateTime::Compare(a.AsDateTime(), b.AsDateTime());
        case Family::Bytes:
            return CompareBytes(a.Bytes(), b.Bytes());
        case Family::Object:
            return CompareObjects(a.ToObject(), b.ToObject());
        default:
            return Order::unordered;
    }
}

bool Value::Equal(const Value& a, const Value& b) {
    return Compare(a, b) == std::partial_ordering::equivalent;
}

}  // namespace quarv
