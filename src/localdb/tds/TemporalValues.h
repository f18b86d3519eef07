// The contents of date and time values, encode beside decode ([MS-TDS], "Date/Times"). Writers put
// the u8 count before the value; readers take the content alone and raise ValueLength where its
// size is none of the type's. Time of day and datetime2 count 100 ns, whatever the wire's scale.
#pragma once

#include <cstdint>
#include <span>

#include "localdb/tds/ByteWriter.h"

namespace quarv::localdb::tds {

constexpr int64_t TicksOfDay = 864'000'000'000;       // 100 ns
constexpr int64_t ThreeHundredthsOfDay = 25'920'000;  // 1/300 s

// datetime: 1/300 s since 1900-01-01, negative before it.
void WriteDateTime(ByteWriter& writer, int64_t threeHundredths);
int64_t ReadDateTime(std::span<const std::byte> content);

// smalldatetime: minutes since 1900-01-01.
void WriteSmallDateTime(ByteWriter& writer, int64_t minutes);
int64_t ReadSmallDateTime(std::span<const std::byte> content);

// date: days since 0001-01-01.
void WriteDate(ByteWriter& writer, int64_t days);
int64_t ReadDate(std::span<const std::byte> content);

// time: 100 ns since midnight; what the scale cannot hold is cut.
void WriteTime(ByteWriter& writer, uint8_t scale, int64_t ticks);
int64_t ReadTime(std::span<const std::byte> content, uint8_t scale);

// datetime2: 100 ns since 0001-01-01.
void WriteDateTime2(ByteWriter& writer, uint8_t scale, int64_t ticks);
int64_t ReadDateTime2(std::span<const std::byte> content, uint8_t scale);

// datetimeoffset: UTC in 100 ns since 0001-01-01, with the offset of its clock in minutes.
struct OffsetTime {
    int64_t utcTicks = 0;
    int16_t offsetMinutes = 0;

    friend bool operator==(const OffsetTime&, const OffsetTime&) = default;
};
void WriteDateTimeOffset(ByteWriter& writer, uint8_t scale, const OffsetTime& value);
OffsetTime ReadDateTimeOffset(std::span<const std::byte> content, uint8_t scale);

}  // namespace quarv::localdb::tds
