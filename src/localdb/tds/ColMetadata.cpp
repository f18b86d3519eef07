#include "localdb/tds/ColMetadata.h"

namespace quarv::localdb::tds {

namespace {

constexpr uint16_t NoMetadata = 0xFFFF;

bool NamesTable(const TypeInfo& type) {
    return type.Rule().framing == Framing::LongCount;
}

void EncodeColumn(ByteWriter& writer, const ColumnInfo& column) {
    writer.U32(column.userType);
    writer.U16(column.flags);
    column.type.Encode(writer);
    if (NamesTable(column.type)) {
        writer.U8(static_cast<uint8_t>(column.table.size()));
        for (const QString& part : column.table) writer.MediumText(part);
    }
    writer.ShortText(column.name);
}

ColumnInfo DecodeColumn(ByteReader& reader) {
    ColumnInfo column;
    column.userType = reader.U32();
    column.flags = reader.U16();
    column.type = TypeInfo::Decode(reader);
    if (NamesTable(column.type)) {
        const uint8_t parts = reader.U8();
        for (uint8_t i = 0; i < parts; ++i) column.table.append(reader.MediumText());
    }
    column.name = reader.ShortText();
    return column;
}

}  // namespace

void ColMetadata::Encode(ByteWriter& writer) const {
    writer.U8(static_cast<uint8_t>(Token::ColMetadata));
    if (columns.empty()) {
        writer.U16(NoMetadata);
        return;
    }
    writer.U16(static_cast<uint16_t>(columns.size()));
    for (const ColumnInfo& column : columns) EncodeColumn(writer, column);
}

ColMetadata ColMetadata::Decode(ByteReader& reader) {
    ExpectToken(reader, Token::ColMetadata);
    ColMetadata metadata;
    const uint16_t count = reader.U16();
    if (count == NoMetadata) return metadata;
    for (uint16_t i = 0; i < count; ++i) metadata.columns.push_back(DecodeColumn(reader));
    return metadata;
}

}  // namespace quarv::localdb::tds
