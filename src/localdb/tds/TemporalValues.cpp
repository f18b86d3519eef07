#include "localdb/tds/TemporalValues.h"

#include <array>

#include "localdb/tds/ByteReader.h"
#include "localdb/tds/TypeTable.h"

namespace quarv::localdb::tds {

namespace {

constexpr int64_t LastDay = 3'652'058;  // 9999-12-31, since 0001-01-01

// 100 ns in one unit of each scale.
constexpr std::array<int64_t, 8> TicksOfScale{10'000'000, 1'000'000, 100'000, 10'000,
                                              1'000,      100,       10,      1};
constexpr int64_t MinutesOfDay = 1440;

void PutBytes(ByteWriter& writer, uint64_t value, uint8_t count) {
    for (uint8_t i = 0; i < count; ++i, value >>= 8) writer.U8(static_cast<uint8_t>(value));
}

int64_t TakeBytes(ByteReader& reader, size_t count) {
    int64_t value = 0;
    for (size_t i = 0; i < count; ++i) value |= static_cast<int64_t>(reader.U8()) << (8 * i);
    return value;
}

void PutTime(ByteWriter& writer, uint8_t scale, int64_t ticks) {
    PutBytes(writer, static_cast<uint64_t>(ticks / TicksOfScale[scale]), TimeSize(scale));
}

int64_t TakeTime(ByteReader& reader, uint8_t scale) {
    const int64_t ticks = TakeBytes(reader, TimeSize(scale)) * TicksOfScale[scale];
    if (ticks >= TicksOfDay) throw ProtocolError(Fault::ValueTooLong, 0);
    return ticks;
}

void ExpectSize(std::span<const std::byte> content, size_t size) {
    if (content.size() != size) throw ProtocolError(Fault::ValueLength, 0);
}

}  // namespace

void WriteDateTime(ByteWriter& writer, int64_t threeHundredths) {
    int64_t days = threeHundredths / ThreeHundredthsOfDay;
    int64_t rest = threeHundredths % ThreeHundredthsOfDay;
    if (rest < 0) {
        rest += ThreeHundredthsOfDay;
        --days;
    }
    writer.U8(8);
    writer.U32(static_cast<uint32_t>(days));
    writer.U32(static_cast<uint32_t>(rest));
}

int64_t ReadDateTime(std::span<const std::byte> content) {
    ExpectSize(content, 8);
    ByteReader reader(content);
    const int64_t days = reader.I32();
    const int64_t rest = reader.U32();
    if (rest >= ThreeHundredthsOfDay) throw ProtocolError(Fault::ValueTooLong, 4);
    return days * ThreeHundredthsOfDay + rest;
}

void WriteSmallDateTime(ByteWriter& writer, int64_t minutes) {
    writer.U8(4);
    writer.U16(static_cast<uint16_t>(minutes / MinutesOfDay));
    writer.U16(static_cast<uint16_t>(minutes % MinutesOfDay));
}

int64_t ReadSmallDateTime(std::span<const std::byte> content) {
    ExpectSize(content, 4);
    ByteReader reader(content);
    const int64_t days = reader.U16();
    const int64_t minutes = reader.U16();
    if (minutes >= MinutesOfDay) throw ProtocolError(Fault::ValueTooLong, 2);
    return days * MinutesOfDay + minutes;
}

void WriteDate(ByteWriter& writer, int64_t days) {
    writer.U8(3);
    PutBytes(writer, static_cast<uint64_t>(days), 3);
}

int64_t ReadDate(std::span<const std::byte> content) {
    ExpectSize(content, 3);
    ByteReader reader(content);
    return TakeBytes(reader, 3);
}

void WriteTime(ByteWriter& writer, uint8_t scale, int64_t ticks) {
    writer.U8(TimeSize(scale));
    PutTime(writer, scale, ticks);
}

int64_t ReadTime(std::span<const std::byte> content, uint8_t scale) {
    ExpectSize(content, TimeSize(scale));
    ByteReader reader(content);
    return TakeTime(reader, scale);
}

void WriteDateTime2(ByteWriter& writer, uint8_t scale, int64_t ticks) {
    writer.U8(static_cast<uint8_t>(TimeSize(scale) + 3));
    PutTime(writer, scale, ticks % TicksOfDay);
    PutBytes(writer, static_cast<uint64_t>(ticks / TicksOfDay), 3);
}

int64_t ReadDateTime2(std::span<const std::byte> content, uint8_t scale) {
    ExpectSize(content, TimeSize(scale) + 3u);
    ByteReader reader(content);
    const int64_t time = TakeTime(reader, scale);
    const int64_t days = TakeBytes(reader, 3);
    if (days > LastDay) throw ProtocolError(Fault::ValueTooLong, 0);
    return days * TicksOfDay + time;
}

void WriteDateTimeOffset(ByteWriter& writer, uint8_t scale, const OffsetTime& value) {
    writer.U8(static_cast<uint8_t>(TimeSize(scale) + 5));
    PutTime(writer, scale, value.utcTicks % TicksOfDay);
    PutBytes(writer, static_cast<uint64_t>(value.utcTicks / TicksOfDay), 3);
    writer.U16(static_cast<uint16_t>(value.offsetMinutes));
}

OffsetTime ReadDateTimeOffset(std::span<const std::byte> content, uint8_t scale) {
    ExpectSize(content, TimeSize(scale) + 5u);
    OffsetTime value;
    value.utcTicks = ReadDateTime2(content.first(TimeSize(scale) + 3u), scale);
    ByteReader reader(content.subspan(TimeSize(scale) + 3u));
    value.offsetMinutes = static_cast<int16_t>(reader.U16());
    return value;
}

}  // namespace quarv::localdb::tds
