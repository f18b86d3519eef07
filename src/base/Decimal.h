// Decimal: an exact decimal number of up to 38 digits, as a magnitude, a scale and a sign. It keeps
// the scale that it was given ("1.50" stays "1.50"). It is a carrier: no arithmetic lives here.
#pragma once

#include <QString>
#include <QStringView>
#include <optional>

namespace quarv {

__extension__ typedef unsigned __int128 UInt128;

struct Decimal {
    UInt128 magnitude = 0;  // the digits, below 10^38
    quint8 scale = 0;       // digits right of the point, 0..38
    bool negative = false;  // never set for zero

    static constexpr int MaxDigits = 38;

    // Reads [+-]digits[.digits] with "." as the point, whole text; nothing else, no blanks, no
    // exponent. Empty where the text is not of that form or has more than 38 digits.
    static std::optional<Decimal> Parse(QStringView text);

    // The digits with `point` before the last `scale` of them, a leading "0" where none would
    // stand there ("-0.05"), no grouping.
    QString ToText(QChar point = u'.') const;
    double ToDouble() const;

    // Numeric order; 1.0 equals 1.00.
    static int Compare(const Decimal& a, const Decimal& b);
};

}  // namespace quarv
