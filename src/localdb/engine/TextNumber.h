// TextNumber: numbers as T-SQL reads them from text and writes them to text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "localdb/engine/Int128.h"
#include "localdb/engine/Moment.h"

namespace quarv::localdb::engine {

class TextNumber {
  public:
    // [blanks][sign]digits[blanks]; empty text is 0. Nothing with `invalid` false: too large.
    static std::optional<Int128> ParseInteger(std::string_view text, bool& invalid);
    // As a float literal; empty text is 0. Nothing: not of that form or out of range.
    static std::optional<double> ParseReal(std::string_view text);
    // A decimal with an optional currency sign and commas, in 1/10,000.
    static std::optional<Int128> ParseMoney(std::string_view text, bool& invalid);

    // Two digits behind the point (style 0), with commas (1), or four digits (2).
    static std::string MoneyText(int64_t money, int style);
    // Six digits at most (style 0), 16 or 8 digits in scientific form (1, 2), or the shortest that
    // reads back (3).
    static std::string RealText(double value, TypeKind kind, int style);

    // A moment as a number of days and back; false where it lies outside datetime's range.
    static double DaysSince1900(TypeKind kind, int64_t stored);
    static bool MomentFromDays(double days, Moment& moment);
    // Digits and date marks only: a day that does not exist rather than no date at all.
    static bool LooksLikeDate(std::string_view text);
};

}  // namespace quarv::localdb::engine
