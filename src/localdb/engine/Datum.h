// Datum: one value on its way from the engine to a sink, as a view: it owns nothing and costs no
// allocation. Which member counts follows from the column's type (comment at each member).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "base/Decimal.h"

namespace quarv::localdb::engine {

struct Datum {
    bool null = true;
    // bit, tinyint .. bigint; smallmoney and money in 1/10,000;
    // date as days since 0001-01-01; time as 100 ns since midnight;
    // smalldatetime as minutes since 1900-01-01; datetime as 1/300 s since 1900-01-01 (negative
    // before it); datetime2 and datetimeoffset (its UTC) as 100 ns since 0001-01-01.
    int64_t integer = 0;
    int16_t offsetMinutes = 0;  // datetimeoffset
    double real = 0;            // real, float
    UInt128 magnitude = 0;      // decimal, numeric: digits without the point, scale by the type
    bool negative = false;      // decimal, numeric
    std::string_view text;      // character kinds and xml: UTF-8
    // binaries, rowversion; uniqueidentifier as 16 bytes in the order in which they sort (Guid.h)
    std::span<const std::byte> bytes;
};

}  // namespace quarv::localdb::engine
