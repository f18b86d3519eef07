// The framing around values on the way out: counts before, ends behind. Inline, since every cell of
// every row passes here.
#pragma once

#include "localdb/tds/ByteWriter.h"
#include "localdb/tds/ProtocolError.h"
#include "localdb/tds/TypeInfo.h"

namespace quarv::localdb::tds {

constexpr uint16_t NullShortCount = 0xFFFF;
constexpr uint32_t NullLongCount = 0xFFFFFFFF;
constexpr uint64_t NullPlpLength = 0xFFFFFFFFFFFFFFFF;
constexpr uint64_t UnknownPlpLength = 0xFFFFFFFFFFFFFFFE;
constexpr uint8_t TextPointerSize = 16;
constexpr uint8_t TextTimestampSize = 8;

// Raises ValueTooLong for what a u16 count cannot state.
inline void BeginShort(ByteWriter& writer, size_t bytes) {
    if (bytes >= NullShortCount) throw ProtocolError(Fault::ValueTooLong, 0);
    writer.U16(static_cast<uint16_t>(bytes));
}

// A value in one part, then EndPlp. Raises ValueTooLong for what a u32 count cannot state.
inline void BeginPlp(ByteWriter& writer, size_t bytes) {
    if (bytes > 0xFFFFFFFF) throw ProtocolError(Fault::ValueTooLong, 0);
    writer.U64(bytes);
    if (bytes > 0) writer.U32(static_cast<uint32_t>(bytes));
}
inline void EndPlp(ByteWriter& writer) {
    writer.U32(0);
}

// A text pointer, which no client follows any more, its timestamp and the count.
void BeginLong(ByteWriter& writer, size_t bytes);

// A null in a row. Not for Framing::Fixed.
void WriteNull(ByteWriter& writer, const TypeInfo& type);

}  // namespace quarv::localdb::tds
