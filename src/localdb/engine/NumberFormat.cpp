#include "localdb/engine/NumberFormat.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include "localdb/engine/CustomNumberFormat.h"
#include "localdb/engine/DecimalDigits.h"

namespace quarv::localdb::engine {

namespace {

using Kind = FormattedNumber::Kind;

constexpr int Unsaid = -1;

std::string Grouped(const std::string& whole) {
    std::string text;
    for (size_t i = 0; i < whole.size(); ++i) {
        if (i > 0 && (whole.size() - i) % 3 == 0) text += ',';
        text += whole[i];
    }
    return text;
}

// Digits with `decimals` places behind the point, without a sign.
std::string Fixed(DecimalDigits digits, int decimals, bool grouped) {
    digits.RoundTo(decimals);
    std::string text = grouped ? Grouped(digits.Whole()) : digits.Whole();
    if (decimals > 0) text += '.' + digits.Fraction(decimals);
    return text;
}

std::string Exponent(int exponent, char letter, int width) {
    std::array<char, 16> text;
    std::snprintf(text.data(), text.size(), "%c%c%0*d", letter, exponent < 0 ? '-' : '+', width,
                  exponent < 0 ? -exponent : exponent);
    return text.data();
}

std::string Scientific(DecimalDigits digits, int decimals, char letter, int width) {
    digits.RoundToSignificant(decimals + 1);
    const int exponent = digits.IsZero() ? 0 : digits.point - 1;
    std::string all = digits.digits;
    all.resize(static_cast<size_t>(decimals) + 1, '0');
    std::string text(1, all[0]);
    if (decimals > 0) text += '.' + all.substr(1);
    return text + Exponent(exponent, letter, width);
}

// The shorter of both notations, as many digits as are significant.
std::string General(const FormattedNumber& number, DecimalDigits digits, int precision,
                    char letter) {
    const bool plain = precision <= 0 && number.kind != Kind::Real;
    if (plain) {
        const int decimals = std::max(0, static_cast<int>(digits.digits.size()) - digits.point);
        return Fixed(digits, decimals, false);
    }
    const int limit = precision > 0 ? precision : number.significant;
    digits.RoundToSignificant(limit);
    digits.TrimZeros();
    if (digits.IsZero()) return "0";
    const int exponent = digits.point - 1;
    const int decimals = std::max(0, static_cast<int>(digits.digits.size()) - digits.point);
    if (exponent < limit && exponent >= -5) return Fixed(digits, decimals, false);
    const auto behind = static_cast<int>(digits.digits.size()) - 1;
    return Scientific(digits, behind, letter == 'g' ? 'e' : 'E', 2);
}

std::optional<std::string> Hexadecimal(const FormattedNumber& number, int precision, bool upper) {
    if (number.kind != Kind::Integer) return std::nullopt;
    auto bits = static_cast<uint64_t>(number.integer);
    if (number.bits < 64) bits &= (uint64_t{1} << number.bits) - 1;
    std::array<char, 128> text;
    std::snprintf(text.data(), text.size(), upper ? "%0*llX" : "%0*llx", std::max(precision, 1),
                  static_cast<unsigned long long>(bits));
    return text.data();
}

std::string Signed(bool negative, const std::string& text) {
    return negative ? '-' + text : text;
}

bool ShowsZero(const std::string& text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return c >= '1' && c <= '9'; });
}

std::optional<std::string> Standard(const FormattedNumber& number, char letter, int precision) {
    DecimalDigits digits{number.digits, number.point};
    const int two = precision == Unsaid ? 2 : precision;
    const auto sign = [&number](const std::string& text) {
        return Signed(number.negative && !ShowsZero(text), text);
    };
    switch (letter | 0x20) {
        case 'c': {
            const std::string text = '$' + Fixed(digits, two, true);
            return number.negative && !ShowsZero(text) ? '(' + text + ')' : text;
        }
        case 'd': {
            if (number.kind != Kind::Integer) return std::nullopt;
            std::string text = digits.Whole();
            const auto width = static_cast<size_t>(std::max(precision, 0));
            if (text.size() < width) text.insert(0, width - text.size(), '0');
            return sign(text);
        }
        case 'e':
            return Signed(number.negative,
                          Scientific(digits, precision == Unsaid ? 6 : precision, letter, 3));
        case 'f':
            return sign(Fixed(digits, two, false));
        case 'g':
            return sign(General(number, digits, precision, letter));
        case 'n':
            return sign(Fixed(digits, two, true));
        case 'p':
            digits.point += 2;
            return sign(Fixed(digits, two, true)) + " %";
        case 'r':
            if (number.kind != Kind::Real) return std::nullopt;
            return sign(General(number, digits, 0, 'G'));
        case 'x':
            return Hexadecimal(number, precision, letter == 'X');
        default:
            return std::nullopt;
    }
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

std::optional<std::string> NumberFormat::Format(const FormattedNumber& number,
                                                std::string_view format) {
    if (format.empty()) format = "G";
    const bool standard = IsLetter(format[0]) && format.size() <= 3 &&
                          std::all_of(format.begin() + 1, format.end(), IsDigit);
    if (!standard) return FormatCustom(number, format);
    int precision = Unsaid;
    for (const char c : format.substr(1)) precision = std::max(precision, 0) * 10 + (c - '0');
    return Standard(number, format[0], precision);
}

}  // namespace quarv::localdb::engine
