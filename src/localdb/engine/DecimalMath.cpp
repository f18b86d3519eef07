#include "localdb/engine/DecimalMath.h"

#include <array>
#include <boost/multiprecision/cpp_int.hpp>
#include <charconv>
#include <cmath>

#include "base/Decimal.h"

namespace quarv::localdb::engine {

namespace {

// Wide enough for the product of two 38-digit numbers.
using Big = boost::multiprecision::number<boost::multiprecision::cpp_int_backend<
    384, 384, boost::multiprecision::signed_magnitude, boost::multiprecision::unchecked, void>>;

Big ToBig(Int128 value) {
    const bool negative = value < 0;
    const auto magnitude = negative ? -static_cast<UInt128>(value) : static_cast<UInt128>(value);
    Big big = static_cast<uint64_t>(magnitude >> 64);
    big <<= 64;
    big += static_cast<uint64_t>(magnitude);
    return negative ? -big : big;
}

Int128 FromBig(const Big& value) {
    const Big magnitude = abs(value);
    const auto high = static_cast<uint64_t>(Big(magnitude >> 64));
    const auto low = static_cast<uint64_t>(Big(magnitude & UINT64_MAX));
    const Int128 result = static_cast<Int128>(static_cast<UInt128>(high) << 64 | low);
    return value < 0 ? -result : result;
}

Big BigPower(int exponent) {
    if (exponent <= 38) return ToBig(DecimalMath::PowerOfTen(exponent));
    return ToBig(DecimalMath::PowerOfTen(38)) * BigPower(exponent - 38);
}

// Brings `value` from one scale to another and checks the number of digits.
std::optional<Int128> Fit(Big value, int from, int precision, int scale, bool cut) {
    if (scale > from) {
        value *= BigPower(scale - from);
    } else if (scale < from) {
        const Big divisor = BigPower(from - scale);
        const Big rest = value % divisor;
        value /= divisor;
        if (!cut && abs(rest) * 2 >= divisor) value += rest < 0 ? -1 : 1;
    }
    if (abs(value) >= BigPower(precision)) return std::nullopt;
    return FromBig(value);
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

}  // namespace

Int128 DecimalMath::PowerOfTen(int exponent) {
    static const std::array<Int128, 39> powers = [] {
        std::array<Int128, 39> table{};
        table[0] = 1;
        for (size_t i = 1; i < table.size(); ++i) table[i] = table[i - 1] * 10;
        return table;
    }();
    return powers[static_cast<size_t>(exponent)];
}

std::optional<Int128> DecimalMath::Rescale(Int128 value, int from, int precision, int scale,
                                           bool cut) {
    if (scale == from) {
        const Int128 limit = PowerOfTen(precision);
        if (value >= limit || value <= -limit) return std::nullopt;
        return value;
    }
    return Fit(ToBig(value), from, precision, scale, cut);
}

std::optional<Int128> DecimalMath::Add(Int128 a, int scaleA, Int128 b, int scaleB, int precision,
                                       int scale) {
    const int common = std::max(scaleA, scaleB);
    const Big sum = ToBig(a) * BigPower(common - scaleA) + ToBig(b) * BigPower(common - scaleB);
    return Fit(sum, common, precision, scale, false);
}

std::optional<Int128> DecimalMath::Multiply(Int128 a, int scaleA, Int128 b, int scaleB,
                                            int precision, int scale) {
    return Fit(ToBig(a) * ToBig(b), scaleA + scaleB, precision, scale, false);
}

std::optional<Int128> DecimalMath::Divide(Int128 a, int scaleA, Int128 b, int scaleB, int precision,
                                          int scale) {
    // a/10^scaleA : b/10^scaleB, wanted in units of 10^-scale.
    const int shift = scale + scaleB - scaleA;
    Big dividend = ToBig(a);
    Big divisor = ToBig(b);
    if (shift >= 0) {
        dividend *= BigPower(shift);
    } else {
        divisor *= BigPower(-shift);
    }
    return Fit(dividend / divisor, scale, precision, scale, true);
}

std::optional<Int128> DecimalMath::Remainder(Int128 a, int scaleA, Int128 b, int scaleB,
                                             int precision, int scale) {
    const int common = std::max(scaleA, scaleB);
    const Big rest =
        (ToBig(a) * BigPower(common - scaleA)) % (ToBig(b) * BigPower(common - scaleB));
    return Fit(rest, common, precision, scale, false);
}

std::optional<Int128> DecimalMath::Parse(std::string_view text, int precision, int scale,
                                         bool& invalid) {
    invalid = true;
    text = Trimmed(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
    Big value = 0;
    int digits = 0, places = 0;
    bool point = false, roundUp = false;
    for (const char c : text) {
        if (c == '.' && !point) {
            point = true;
            continue;
        }
        if (!IsDigit(c)) return std::nullopt;
        ++digits;
        if (point && ++places > scale) {
            if (places == scale + 1) roundUp = c >= '5';
            continue;
        }
        // Beyond 80 digits it has overflowed long ago; the form is still checked.
        if (value < BigPower(76)) value = value * 10 + (c - '0');
    }
    if (digits == 0) return std::nullopt;
    invalid = false;
    if (roundUp) value += 1;
    const int scaled = std::min(places, scale);
    return Fit(negative ? -value : value, scaled, precision, scale, false);
}

std::string DecimalMath::ToText(Int128 value, int scale) {
    const bool negative = value < 0;
    auto rest = negative ? -static_cast<UInt128>(value) : static_cast<UInt128>(value);
    std::array<char, 48> buffer;
    size_t at = buffer.size();
    int places = 0;
    while (rest != 0 || places <= scale) {
        if (places == scale && scale > 0) buffer[--at] = '.';
        buffer[--at] = static_cast<char>('0' + static_cast<int>(rest % 10));
        rest /= 10;
        ++places;
    }
    if (negative) buffer[--at] = '-';
    return {buffer.data() + at, buffer.size() - at};
}

double DecimalMath::ToDouble(Int128 value, int scale) {
    // Through the text, so that the result is the nearest double.
    const std::string text = ToText(value, scale);
    double result = 0;
    std::from_chars(text.data(), text.data() + text.size(), result);
    return result;
}

std::optional<Int128> DecimalMath::FromDouble(double value, int precision, int scale) {
    if (!std::isfinite(value) || std::fabs(value) >= 1e38) return std::nullopt;
    std::array<char, 400> buffer;
    // 17 significant digits are all that a double holds.
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed);
    bool invalid = false;
    const auto length = static_cast<size_t>(end.ptr - buffer.data());
    return Parse({buffer.data(), length}, precision, scale, invalid);
}

void DecimalMath::Store(Int128 value, char* out) {
    const bool negative = value < 0;
    auto rest = negative ? -static_cast<UInt128>(value) : static_cast<UInt128>(value);
    // Negative numbers are stored inverted, so that the larger magnitude comes first.
    if (negative) rest = ~rest;
    out[0] = static_cast<char>(negative ? 0 : 1);
    for (int i = 16; i >= 1; --i) {
        out[i] = static_cast<char>(rest & 0xFF);
        rest >>= 8;
    }
}

std::optional<Int128> DecimalMath::Load(std::string_view bytes) {
    if (bytes.size() != StoredBytes || static_cast<unsigned char>(bytes[0]) > 1) {
        return std::nullopt;
    }
    UInt128 rest = 0;
    for (size_t i = 1; i < StoredBytes; ++i) {
        rest = rest << 8 | static_cast<unsigned char>(bytes[i]);
    }
    const bool negative = bytes[0] == 0;
    if (negative) rest = ~rest;
    if (rest >= static_cast<UInt128>(PowerOfTen(38))) return std::nullopt;
    const auto value = static_cast<Int128>(rest);
    return negative ? -value : value;
}

}  // namespace quarv::localdb::engine
