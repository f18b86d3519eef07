#include "localdb/tds/TypeInfo.h"

namespace quarv::localdb::tds {

namespace {

constexpr uint32_t LargestShortSize = 8000;
constexpr uint8_t LargestPrecision = 38;
constexpr uint8_t LargestTimeScale = 7;

bool ValidByteSize(const TypeRule& rule, uint32_t size) {
    return size < 32 && ((rule.sizes >> size) & 1) != 0;
}

// Bytes of the values of a type whose detail states no size.
uint32_t ImpliedSize(const TypeInfo& info) {
    switch (info.code) {
        case TypeCode::Date:
            return 3;
        case TypeCode::Time:
            return TimeSize(info.scale);
        case TypeCode::DateTime2:
            return TimeSize(info.scale) + 3u;
        case TypeCode::DateTimeOffset:
            return TimeSize(info.scale) + 5u;
        case TypeCode::Xml:
            return MaxSize;
        default:
            return info.Rule().sizes;
    }
}

void DecodeDetail(ByteReader& reader, TypeInfo& info) {
    const TypeRule& rule = info.Rule();
    switch (rule.detail) {
        case TypeDetail::None:
            break;
        case TypeDetail::Size8:
            info.size = reader.U8();
            if (!ValidByteSize(rule, info.size)) reader.Fail(Fault::TypeSize);
            return;
        case TypeDetail::Size16:
            info.size = reader.U16();
            if (info.size > LargestShortSize && info.size != MaxSize) reader.Fail(Fault::TypeSize);
            return;
        case TypeDetail::Size32:
            info.size = reader.U32();
            return;
        case TypeDetail::PrecisionScale:
            info.size = reader.U8();
            info.precision = reader.U8();
            info.scale = reader.U8();
            if (!ValidByteSize(rule, info.size) || info.precision == 0 ||
                info.precision > LargestPrecision || info.scale > info.precision) {
                reader.Fail(Fault::TypeSize);
            }
            return;
        case TypeDetail::Scale:
            info.scale = reader.U8();
            if (info.scale > LargestTimeScale) reader.Fail(Fault::TypeSize);
            break;
        case TypeDetail::SchemaFlag:
            if (reader.U8() != 0) reader.Fail(Fault::TypeSize);
            break;
    }
    info.size = ImpliedSize(info);
}

}  // namespace

bool TypeInfo::IsPlp() const {
    const Framing framing = Rule().framing;
    return framing == Framing::Plp || (framing == Framing::ShortCount && size == MaxSize);
}

void TypeInfo::Encode(ByteWriter& writer) const {
    writer.U8(static_cast<uint8_t>(code));
    const TypeRule& rule = Rule();
    switch (rule.detail) {
        case TypeDetail::None:
            break;
        case TypeDetail::Size8:
            writer.U8(static_cast<uint8_t>(size));
            break;
        case TypeDetail::Size16:
            writer.U16(static_cast<uint16_t>(size));
            break;
        case TypeDetail::Size32:
            writer.U32(size);
            break;
        case TypeDetail::PrecisionScale:
            writer.U8(static_cast<uint8_t>(size));
            writer.U8(precision);
            writer.U8(scale);
            break;
        case TypeDetail::Scale:
            writer.U8(scale);
            break;
        case TypeDetail::SchemaFlag:
            writer.U8(0);
            break;
    }
    if (rule.collated) writer.Bytes(std::as_bytes(std::span(collation)));
}

TypeInfo TypeInfo::Decode(ByteReader& reader) {
    const uint8_t code = reader.Peek();
    const TypeRule* rule = FindTypeRule(code);
    if (rule == nullptr) {
        reader.Fail(Fault::TypeCode, QStringLiteral("0x%1").arg(code, 2, 16, QChar(u'0')));
    }
    reader.U8();
    TypeInfo info;
    info.code = rule->code;
    DecodeDetail(reader, info);
    if (rule->collated) {
        for (uint8_t& byte : info.collation) byte = reader.U8();
    }
    return info;
}

}  // namespace quarv::localdb::tds
