#include "base/Decimal.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace quarv {

namespace {

// A run of this many digits fits 64 bits, whose arithmetic is much faster than 128 bits'.
constexpr int FastDigits = 18;

constexpr auto PowersOfTen = [] {
    std::array<UInt128, Decimal::MaxDigits + 1> powers{};
    powers[0] = 1;
    for (size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

// Adds the digits of `text` to `magnitude`, in pieces that fit 64 bits. The caller has counted
// them.
UInt128 Accumulate(UInt128 magnitude, QStringView digits) {
    while (!digits.isEmpty()) {
        const qsizetype count = std::min<qsizetype>(digits.size(), FastDigits);
        quint64 piece = 0;
        for (QChar digit : digits.first(count)) piece = piece * 10 + (digit.unicode() - u'0');
        magnitude = magnitude == 0 ? piece : magnitude * PowersOfTen[count] + piece;
        digits = digits.sliced(count);
    }
    return magnitude;
}

qsizetype LeadingDigits(QStringView text) {
    qsizetype count = 0;
    while (count < text.size() && text[count] >= u'0' && text[count] <= u'9') ++count;
    return count;
}

// Writes the digits of `magnitude` backwards, ending at `end`; gives the place of the first.
char16_t* WriteDigits(UInt128 magnitude, char16_t* end) {
    while (magnitude > UINT64_MAX) {
        *--end = static_cast<char16_t>(u'0' + static_cast<unsigned>(magnitude % 10));
        magnitude /= 10;
    }
    for (auto rest = static_cast<quint64>(magnitude); rest != 0; rest /= 10) {
        *--end = static_cast<char16_t>(u'0' + rest % 10);
    }
    return end;
}

}  // namespace

std::optional<Decimal> Decimal::Parse(QStringView text) {
    Decimal result;
    if (text.startsWith(u'-') || text.startsWith(u'+')) {
        result.negative = text.front() == u'-';
        text = text.sliced(1);
    }
    qsizetype wholeDigits = LeadingDigits(text);
    if (wholeDigits == 0) return {};
    QStringView fraction;
    if (wholeDigits < text.size()) {
        if (text[wholeDigits] != u'.') return {};
        fraction = text.sliced(wholeDigits + 1);
        if (fraction.isEmpty() || LeadingDigits(fraction) != fraction.size()) return {};
    }
    QStringView whole = text.first(wholeDigits);
    while (whole.startsWith(u'0')) whole = whole.sliced(1);  // these are not digits of the number
    if (whole.size() + fraction.size() > MaxDigits) return {};
    result.magnitude = Accumulate(Accumulate(0, whole), fraction);
    result.scale = static_cast<quint8>(fraction.size());
    if (result.magnitude == 0) result.negative = false;
    return result;
}

QString Decimal::ToText(QChar point) const {
    std::array<char16_t, MaxDigits + 2> digits;  // one spare each for a zero and a 39th digit
    digits.fill(u'0');
    char16_t* const end = digits.data() + digits.size();
    const char16_t* const first = std::min(WriteDigits(magnitude, end), end - (scale + 1));
    const char16_t* const fraction = end - scale;

    QString text((negative ? 1 : 0) + (end - first) + (scale > 0 ? 1 : 0), Qt::Uninitialized);
    QChar* place = text.data();
    if (negative) *place++ = u'-';
    place = std::copy(first, fraction, place);
    if (scale > 0) *place++ = point;
    std::copy(fraction, static_cast<const char16_t*>(end), place);
    return text;
}

double Decimal::ToDouble() const {
    // Where both operands are exact doubles, one division rounds right; 10^22 is the last exact
    // one.
    constexpr int ExactPower = 22;
    if (magnitude <= (UInt128{1} << 53) && scale <= ExactPower) {
        const double whole = static_cast<double>(static_cast<quint64>(magnitude)) /
                             static_cast<double>(PowersOfTen[scale]);
        return negative ? -whole : whole;
    }
    const QByteArray text = ToText().toLatin1();
    double result = 0;
    std::from_chars(text.begin(), text.end(), result);
    return result;
}

int Decimal::Compare(const Decimal& a, const Decimal& b) {
    const int signA = a.magnitude == 0 ? 0 : (a.negative ? -1 : 1);
    const int signB = b.magnitude == 0 ? 0 : (b.negative ? -1 : 1);
    if (signA != signB) return signA < signB ? -1 : 1;
    if (a.scale == b.scale) {
        return a.magnitude == b.magnitude ? 0 : (a.magnitude < b.magnitude ? -signA : signA);
    }
    // Whole and fractional parts one after the other: scaling a whole magnitude up would overflow.
    const UInt128 wholeA = a.magnitude / PowersOfTen[a.scale];
    const UInt128 wholeB = b.magnitude / PowersOfTen[b.scale];
    if (wholeA != wholeB) return wholeA < wholeB ? -signA : signA;
    const UInt128 fractionA = a.magnitude % PowersOfTen[a.scale] * PowersOfTen[MaxDigits - a.scale];
    const UInt128 fractionB = b.magnitude % PowersOfTen[b.scale] * PowersOfTen[MaxDigits - b.scale];
    if (fractionA == fractionB) return 0;
    return fractionA < fractionB ? -signA : signA;
}

}  // namespace quarv
