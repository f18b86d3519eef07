#include "localdb/engine/TextNumber.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "localdb/engine/DecimalMath.h"

namespace quarv::localdb::engine {

namespace {

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

std::string Printed(const char* format, int digits, double value) {
    std::array<char, 64> buffer;
    const int length = std::snprintf(buffer.data(), buffer.size(), format, digits, value);
    return {buffer.data(), static_cast<size_t>(length)};
}

// Exponents are written with three digits: 1e+010.
std::string WithLongExponent(std::string text) {
    const size_t e = text.find('e');
    if (e != std::string::npos) {
        while (text.size() - e - 2 < 3) text.insert(e + 2, "0");
    }
    return text;
}

}  // namespace

std::optional<Int128> TextNumber::ParseInteger(std::string_view text, bool& invalid) {
    text = Trimmed(text);
    invalid = false;
    if (text.empty()) return 0;
    if (text.find('.') != std::string_view::npos) {
        invalid = true;
        return std::nullopt;
    }
    return DecimalMath::Parse(text, 37, 0, invalid);
}

std::optional<double> TextNumber::ParseReal(std::string_view text) {
    text = Trimmed(text);
    if (text.empty()) return 0.0;
    if (text.front() == '+') text.remove_prefix(1);
    for (const char c : text) {
        // from_chars would read "inf" and "nan".
        const bool known =
            (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E';
        if (!known) return std::nullopt;
    }
    double value = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<Int128> TextNumber::ParseMoney(std::string_view text, bool& invalid) {
    text = Trimmed(text);
    std::string plain;
    for (const char c : text) {
        if (c != ',' && c != '$') plain += c;
    }
    if (plain.empty()) {
        invalid = false;
        return 0;
    }
    return DecimalMath::Parse(plain, 38, 4, invalid);
}

std::string TextNumber::MoneyText(int64_t money, int style) {
    if (style == 2) return DecimalMath::ToText(money, 4);
    std::string text = DecimalMath::ToText(*DecimalMath::Rescale(money, 4, 38, 2), 2);
    if (style != 1) return text;
    const size_t first = money < 0 ? 1 : 0;
    for (size_t at = text.size() - 3; at > first + 3; at -= 3) text.insert(at - 3, ",");
    return text;
}

std::string TextNumber::RealText(double value, TypeKind kind, int style) {
    switch (style) {
        case 1:
            return WithLongExponent(Printed("%.*e", 7, value));
        case 2:
            return WithLongExponent(Printed("%.*e", 15, value));
        case 3: {
            std::array<char, 64> buffer;
            const auto end =
                kind == TypeKind::Real
                    ? std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                                    static_cast<float>(value))
                    : std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
            return {buffer.data(), static_cast<size_t>(end.ptr - buffer.data())};
        }
        default:
            return WithLongExponent(Printed("%.*g", 6, value));
    }
}

double TextNumber::DaysSince1900(TypeKind kind, int64_t stored) {
    if (kind == TypeKind::SmallDateTime) return static_cast<double>(stored) / 1440;
    return static_cast<double>(stored) / 25'920'000;
}

bool TextNumber::MomentFromDays(double days, Moment& moment) {
    if (!(days >= -53690.0 && days < 2958464.0)) return false;
    const double whole = std::floor(days);
    const auto ticks = static_cast<int64_t>(
        std::llround((days - whole) * static_cast<double>(Moment::TicksPerDay)));
    moment.SetDays(static_cast<int64_t>(whole) + Moment::DaysFromCivil(1900, 1, 1));
    moment.SetTicks(std::min(ticks, Moment::TicksPerDay - 1));
    return true;
}

bool TextNumber::LooksLikeDate(std::string_view text) {
    bool digits = false;
    for (const char c : Trimmed(text)) {
        const bool digit = c >= '0' && c <= '9';
        digits = digits || digit;
        if (!digit && std::string_view("-/.: T").find(c) == std::string_view::npos) return false;
    }
    return digits;
}

}  // namespace quarv::localdb::engine
