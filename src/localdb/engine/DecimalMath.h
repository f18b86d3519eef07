// DecimalMath: exact arithmetic on decimals of up to 38 digits, held as a signed 128-bit integer
// and a scale that the type knows.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "localdb/engine/Int128.h"

namespace quarv::localdb::engine {

class DecimalMath {
  public:
    static Int128 PowerOfTen(int exponent);  // 0..38

    // Each is empty where the result has more than `precision` digits; results are rounded half
    // away from zero to `scale`, quotients are cut, as the server does.
    static std::optional<Int128> Rescale(Int128 value, int from, int precision, int scale,
                                         bool cut = false);
    static std::optional<Int128> Add(Int128 a, int scaleA, Int128 b, int scaleB, int precision,
                                     int scale);
    static std::optional<Int128> Multiply(Int128 a, int scaleA, Int128 b, int scaleB, int precision,
                                          int scale);
    // `b` is not zero.
    static std::optional<Int128> Divide(Int128 a, int scaleA, Int128 b, int scaleB, int precision,
                                        int scale);
    static std::optional<Int128> Remainder(Int128 a, int scaleA, Int128 b, int scaleB,
                                           int precision, int scale);

    // [blanks][+-]digits[.digits][blanks], rounded to `scale`. `invalid` tells a text that is no
    // number from one that is too large.
    static std::optional<Int128> Parse(std::string_view text, int precision, int scale,
                                       bool& invalid);
    static std::string ToText(Int128 value, int scale);
    static double ToDouble(Int128 value, int scale);
    // The nearest decimal; empty where it does not fit or is no number.
    static std::optional<Int128> FromDouble(double value, int precision, int scale);

    // 17 bytes whose order as bytes is the order of the numbers, for decimals beyond 18 digits.
    static constexpr size_t StoredBytes = 17;
    static void Store(Int128 value, char* out);
    // Empty where the bytes are not of that form.
    static std::optional<Int128> Load(std::string_view bytes);
};

}  // namespace quarv::localdb::engine
