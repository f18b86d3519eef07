#include "localdb/tds/Frames.h"

#include <array>

namespace quarv::localdb::tds {

void BeginLong(ByteWriter& writer, size_t bytes) {
    static constexpr std::array<std::byte, TextPointerSize + TextTimestampSize> Filler{};
    if (bytes >= 0x7FFFFFFF) throw ProtocolError(Fault::ValueTooLong, 0);
    writer.U8(TextPointerSize);
    writer.Bytes(Filler);
    writer.U32(static_cast<uint32_t>(bytes));
}

void WriteNull(ByteWriter& writer, const TypeInfo& type) {
    switch (type.Rule().framing) {
        case Framing::Fixed:
            throw ProtocolError(Fault::ValueLength, 0);
        case Framing::ByteCount:
        case Framing::LongCount:
            writer.U8(0);
            break;
        case Framing::ShortCount:
            if (!type.IsPlp()) {
                writer.U16(NullShortCount);
                break;
            }
            [[fallthrough]];
        case Framing::Plp:
            writer.U64(NullPlpLength);
            break;
        case Framing::Variant:
            writer.U32(0);
            break;
    }
}

}  // namespace quarv::localdb::tds
