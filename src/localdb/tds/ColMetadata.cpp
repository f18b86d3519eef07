#include "localdb/tds/ColMetadata.h"

namespace quarv::localdb::tds {

namespace {

constexpr uint16_t NoMetadata = 0xFFFF;

bool NamesTable(const TypeInfo& type) {
    return type.Rule().framing == Framing::LongCount;
}

// One name with its dots, where the parts are not counted yet.
void EncodeTable(ByteWriter& writer, const QStringList& parts, Dialect dialect) {
    if (dialect == Dialect::V71) {
        writer.MediumText(parts.join(u'.'));
        return;
    }
    writer.U8(static_cast<uint8_t>(parts.size()));
    for (const QString& part : parts) writer.MediumText(part);
}

QStringList DecodeTable(ByteReader& reader, Dialect dialect) {
    if (dialect == Dialect::V71) {
        const QString name = reader.MediumText();
        return name.isEmpty() ? QStringList() : name.split(u'.');
    }
    QStringList parts;
    const uint8_t count = reader.U8();
    for (uint8_t i = 0; i < count; ++i) parts.append(reader.MediumText());
    return parts;
}

void EncodeColumn(ByteWriter& writer, const ColumnInfo& column, Dialect dialect) {
    if (dialect == Dialect::V71) {
        writer.U16(static_cast<uint16_t>(column.userType));
    } else {
        writer.U32(column.userType);
    }
    writer.U16(column.flags);
    column.type.Encode(writer);
    if (NamesTable(column.type)) EncodeTable(writer, column.table, dialect);
    writer.ShortText(column.name);
}

ColumnInfo DecodeColumn(ByteReader& reader, Dialect dialect) {
    ColumnInfo column;
    column.userType = dialect == Dialect::V71 ? reader.U16() : reader.U32();
    column.flags = reader.U16();
    column.type = TypeInfo::Decode(reader);
    if (NamesTable(column.type)) column.table = DecodeTable(reader, dialect);
    column.name = reader.ShortText();
    return column;
}

}  // namespace

void ColMetadata::Encode(ByteWriter& writer, Dialect dialect) const {
    writer.U8(static_cast<uint8_t>(Token::ColMetadata));
    if (columns.empty()) {
        writer.U16(NoMetadata);
        return;
    }
    writer.U16(static_cast<uint16_t>(columns.size()));
    for (const ColumnInfo& column : columns) EncodeColumn(writer, column, dialect);
}

ColMetadata ColMetadata::Decode(ByteReader& reader, Dialect dialect) {
    ExpectToken(reader, Token::ColMetadata);
    ColMetadata metadata;
    const uint16_t count = reader.U16();
    if (count == NoMetadata) return metadata;
    for (uint16_t i = 0; i < count; ++i) metadata.columns.push_back(DecodeColumn(reader, dialect));
    return metadata;
}

}  // namespace quarv::localdb::tds
