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

    static constexpr int64_t TicksPerDay = 864'000'000'000;  // of 100 nanoseconds

    static int64_t DaysFromCivil(int year, int month, int day);  // since 0001-01-01
    void SetDays(int64_t days);
    int64_t Days() const { return DaysFromCivil(year, month, day); }
    int64_t Ticks() const;  // since midnight
    void SetTicks(int64_t ticks);

    // The stored integer of a date, smalldatetime or datetime; empty where it is out of range.
    std::optional<int64_t> Store(TypeKind kind) const;
    static Moment Load(TypeKind kind, int64_t stored);

    // Reads what SQL Server reads in language us_english with date format mdy: numbers with "/",
    // "-" or ".", ISO forms, month names, and a time with AM and PM. Empty text is 1900-01-01.
    static std::optional<Moment> Parse(std::string_view text);
    // By the style number of CONVERT, for a value of type `kind`; empty for a style that this
    // server does not have.
    std::optional<std::string> ToText(TypeKind kind, int style) const;

    static Moment Now();  // local time
};

}  // namespace quarv::localdb::engine
