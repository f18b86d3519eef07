#include "localdb/tds/NumericValues.h"

#include <bit>

#include "localdb/tds/ByteReader.h"

namespace quarv::localdb::tds {

namespace {

void WriteCounted(ByteWriter& writer, uint32_t size, uint64_t value) {
    writer.U8(static_cast<uint8_t>(size));
    switch (size) {
        case 1:
            writer.U8(static_cast<uint8_t>(value));
            break;
        case 2:
            writer.U16(static_cast<uint16_t>(value));
            break;
        case 4:
            writer.U32(static_cast<uint32_t>(value));
            break;
        default:
            writer.U64(value);
            break;
    }
}

[[noreturn]] void WrongLength() {
    throw ProtocolError(Fault::ValueLength, 0);
}

constexpr UInt128 TenTo38() {
    UInt128 value = 1;
    for (int i = 0; i < Decimal::MaxDigits; ++i) value *= 10;
    return value;
}

}  // namespace

void WriteInteger(ByteWriter& writer, uint32_t size, int64_t value) {
    WriteCounted(writer, size, static_cast<uint64_t>(value));
}

int64_t ReadInteger(std::span<const std::byte> content) {
    ByteReader reader(content);
    switch (content.size()) {
        case 1:
            return reader.U8();
        case 2:
            return static_cast<int16_t>(reader.U16());
        case 4:
            return reader.I32();
        case 8:
            return static_cast<int64_t>(reader.U64());
        default:
            WrongLength();
    }
}

void WriteFloat(ByteWriter& writer, uint32_t size, double value) {
    if (size == 4) {
        WriteCounted(writer, 4, std::bit_cast<uint32_t>(static_cast<float>(value)));
    } else {
        WriteCounted(writer, 8, std::bit_cast<uint64_t>(value));
    }
}

double ReadFloat(std::span<const std::byte> content) {
    ByteReader reader(content);
    if (content.size() == 4) return static_cast<double>(std::bit_cast<float>(reader.U32()));
    if (content.size() != 8) WrongLength();
    return std::bit_cast<double>(reader.U64());
}

void WriteMoney(ByteWriter& writer, uint32_t size, int64_t value) {
    if (size == 4) {
        WriteCounted(writer, 4, static_cast<uint64_t>(value));
        return;
    }
    // The high half stands first, each half little-endian.
    WriteCounted(writer, 8, std::rotl(static_cast<uint64_t>(value), 32));
}

int64_t ReadMoney(std::span<const std::byte> content) {
    ByteReader reader(content);
    if (content.size() == 4) return reader.I32();
    if (content.size() != 8) WrongLength();
    return static_cast<int64_t>(std::rotl(reader.U64(), 32));
}

void WriteDecimal(ByteWriter& writer, uint32_t size, UInt128 magnitude, bool negative) {
    writer.U8(static_cast<uint8_t>(size));
    writer.U8(negative ? 0 : 1);
    for (uint32_t left = size - 1; left > 0; left -= 4) {
        writer.U32(static_cast<uint32_t>(magnitude));
        magnitude >>= 32;
    }
}

Decimal ReadDecimal(std::span<const std::byte> content, uint8_t scale) {
    const size_t size = content.size();
    if (size != 5 && size != 9 && size != 13 && size != 17) WrongLength();
    ByteReader reader(content);
    const bool positive = reader.U8() != 0;
    Decimal decimal;
    decimal.scale = scale;
    for (int shift = 0; !reader.AtEnd(); shift += 32) {
        decimal.magnitude |= static_cast<UInt128>(reader.U32()) << shift;
    }
    if (decimal.magnitude >= TenTo38()) throw ProtocolError(Fault::ValueTooLong, 0);
    decimal.negative = !positive && decimal.magnitude != 0;
    return decimal;
}

}  // namespace quarv::localdb::tds
