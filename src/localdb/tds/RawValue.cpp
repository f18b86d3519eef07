#include "localdb/tds/RawValue.h"

#include "localdb/tds/Frames.h"

namespace quarv::localdb::tds {

namespace {

RawValue ValueOf(std::span<const std::byte> bytes) {
    return {false, QByteArray(reinterpret_cast<const char*>(bytes.data()),
                              static_cast<qsizetype>(bytes.size()))};
}

RawValue DecodeByteCount(ByteReader& reader, const TypeInfo& type) {
    const uint8_t count = reader.Peek();
    if (count == 0) {
        reader.U8();
        return {};
    }
    const bool fits = count < 32 && ((type.Rule().sizes >> count) & 1) != 0 && count <= type.size;
    if (!fits) reader.Fail(Fault::ValueLength);
    reader.U8();
    return ValueOf(reader.Bytes(count));
}

RawValue DecodeShort(ByteReader& reader, const TypeInfo& type) {
    const size_t count = reader.U16();
    if (count == NullShortCount) return {};
    if (count > type.size) reader.Fail(Fault::ValueLength);
    return ValueOf(reader.Bytes(count));
}

RawValue DecodePlp(ByteReader& reader) {
    const uint64_t total = reader.U64();
    if (total == NullPlpLength) return {};
    RawValue value{false, QByteArray()};
    for (;;) {
        const auto part = reader.Bytes(reader.U32());
        if (part.empty()) break;
        value.bytes.append(reinterpret_cast<const char*>(part.data()),
                           static_cast<qsizetype>(part.size()));
    }
    if (total != UnknownPlpLength && total != static_cast<uint64_t>(value.bytes.size())) {
        reader.Fail(Fault::ValueLength);
    }
    return value;
}

RawValue DecodeLong(ByteReader& reader, Place place) {
    if (place == Place::Row) {
        const uint8_t pointer = reader.U8();
        if (pointer == 0) return {};
        reader.Bytes(size_t{pointer} + TextTimestampSize);
    }
    const uint32_t count = reader.U32();
    if (place == Place::Parameter && count == NullLongCount) return {};
    return ValueOf(reader.Bytes(count));
}

void EncodeLong(ByteWriter& writer, const RawValue& value, Place place) {
    if (place == Place::Row) {
        BeginLong(writer, value.Bytes().size());
    } else {
        writer.U32(static_cast<uint32_t>(value.bytes.size()));
    }
    writer.Bytes(value.Bytes());
}

void EncodePlp(ByteWriter& writer, const RawValue& value) {
    BeginPlp(writer, value.Bytes().size());
    writer.Bytes(value.Bytes());
    EndPlp(writer);
}

}  // namespace

RawValue RawValue::Decode(ByteReader& reader, const TypeInfo& type, Place place) {
    switch (type.Rule().framing) {
        case Framing::Fixed:
            return ValueOf(reader.Bytes(type.size));
        case Framing::ByteCount:
            return DecodeByteCount(reader, type);
        case Framing::ShortCount:
            return type.IsPlp() ? DecodePlp(reader) : DecodeShort(reader, type);
        case Framing::Plp:
            return DecodePlp(reader);
        case Framing::LongCount:
            return DecodeLong(reader, place);
        case Framing::Variant:
            break;
    }
    const uint32_t count = reader.U32();
    return count == 0 ? RawValue{} : ValueOf(reader.Bytes(count));
}

void RawValue::Encode(ByteWriter& writer, const TypeInfo& type, Place place) const {
    const Framing framing = type.Rule().framing;
    if (null) {
        if (framing == Framing::LongCount && place == Place::Parameter) {
            writer.U32(NullLongCount);
        } else {
            WriteNull(writer, type);
        }
        return;
    }
    switch (framing) {
        case Framing::Fixed:
            writer.Bytes(Bytes());
            break;
        case Framing::ByteCount:
            writer.U8(static_cast<uint8_t>(bytes.size()));
            writer.Bytes(Bytes());
            break;
        case Framing::ShortCount:
            if (type.IsPlp()) {
                EncodePlp(writer, *this);
                break;
            }
            BeginShort(writer, Bytes().size());
            writer.Bytes(Bytes());
            break;
        case Framing::Plp:
            EncodePlp(writer, *this);
            break;
        case Framing::LongCount:
            EncodeLong(writer, *this, place);
            break;
        case Framing::Variant:
            writer.U32(static_cast<uint32_t>(bytes.size()));
            writer.Bytes(Bytes());
            break;
    }
}

}  // namespace quarv::localdb::tds
