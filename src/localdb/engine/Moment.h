// Moment: dates and times: between days and clock and the integers that are stored, and between
// them and text ("Date and time data types", "CAST and CONVERT: date and time styles").
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "localdb/engine/SqlType.h"

namespace quarv::localdb::engine {

struct Moment {
    int year = 1900, month = 1, day = 1;
    int hour = 0, minute = 0, second = 0;
    int fraction = 0;  // in 100 nanoseconds
    int offset = 0;    // minutes that this clock is ahead of UTC; of datetimeoffset alone

    static constexpr int64_t TicksPerDay = 864'000'000'000;  // of 100 nanoseconds
    // The last of 9999-12-31, since 0001-01-01.
    static constexpr int64_t LastTick = 3'652'059 * TicksPerDay - 1;
    static constexpr int MaxOffset = 14 * 60;

    static int64_t DaysFromCivil(int year, int month, int day);  // since 0001-01-01
    void SetDays(int64_t days);
    int64_t Days() const { return DaysFromCivil(year, month, day); }
    int64_t Ticks() const;  // since midnight
    void SetTicks(int64_t ticks);

    // The stored integer, rounded to what the type can hold (of a datetimeoffset its UTC); empty
    // where it is out of range. A kind alone stands for its seven digits.
    std::optional<int64_t> Store(const SqlType& type) const;
    std::optional<int64_t> Store(TypeKind kind) const;
    static Moment Load(TypeKind kind, int64_t stored, int offset = 0);
    // As Load, yet a datetime with its third of a millisecond: what the kinds of seven digits take
    // over from it.
    static Moment LoadFully(TypeKind kind, int64_t stored, int offset = 0);

    // Which number of "1/2/2024" is what.
    enum class Order { MonthFirst, DayFirst, YearFirst };
    // Reads what SQL Server reads in language us_english: numbers with "/", "-" or ".", ISO forms,
    // month names, a time with AM and PM, an offset. Empty text is 1900-01-01. Empty where it is
    // no moment, or has what a value of `kind` cannot (an offset, more than three digits).
    static std::optional<Moment> Parse(std::string_view text, TypeKind kind = TypeKind::DateTime2,
                                       Order order = Order::MonthFirst);
    // By the style number of CONVERT; empty for a style that does not exist or that shows nothing
    // of such a value.
    std::optional<std::string> ToText(const SqlType& type, int style) const;
    std::optional<std::string> ToText(TypeKind kind, int style) const;
    // The style that a value is shown in where none is asked for.
    static int PlainStyle(TypeKind kind);
    // The order of numbers that a style reads.
    static Order OrderOf(int style);

    static Moment Now();  // local time
};

}  // namespace quarv::localdb::engine
