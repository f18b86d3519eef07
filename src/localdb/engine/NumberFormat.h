// NumberFormat: numbers by the format strings of FORMAT, as the culture en-US shows them. Knows no
// expression.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quarv::localdb::engine {

// A number in decimal digits.
struct FormattedNumber {
    enum class Kind { Integer, Exact, Real };

    Kind kind = Kind::Integer;
    bool negative = false;
    std::string digits;    // without the point
    int point = 0;         // how many of them stand before it; may be negative or beyond the digits
    int significant = 15;  // of a Real: the digits that it holds
    int64_t integer = 0;   // of an Integer
    int bits = 64;         // of an Integer's type, for hexadecimal digits
};

class NumberFormat {
  public:
    // Nothing where the format says nothing about such a number.
    static std::optional<std::string> Format(const FormattedNumber& number,
                                             std::string_view format);
};

}  // namespace quarv::localdb::engine
