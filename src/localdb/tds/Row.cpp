#include "localdb/tds/Row.h"

namespace quarv::localdb::tds {

void Row::Encode(ByteWriter& writer, const ColMetadata& metadata, Token form) const {
    if (form == Token::NbcRow) {
        std::vector<std::byte> nulls(NullBitmapSize(values.size()));
        for (size_t i = 0; i < values.size(); ++i) {
            if (values[i].null) nulls[i / 8] |= static_cast<std::byte>(1u << (i % 8));
        }
        BeginNbcRow(writer, nulls);
    } else {
        BeginRow(writer);
    }
    for (size_t i = 0; i < values.size(); ++i) {
        if (form == Token::NbcRow && values[i].null) continue;
        values[i].Encode(writer, metadata.columns[i].type, Place::Row);
    }
}

Row Row::Decode(ByteReader& reader, const ColMetadata& metadata) {
    const auto form = static_cast<Token>(reader.Peek());
    if (form != Token::Row && form != Token::NbcRow) reader.Fail(Fault::UnexpectedToken);
    reader.U8();
    std::span<const std::byte> nulls;
    if (form == Token::NbcRow) nulls = reader.Bytes(NullBitmapSize(metadata.columns.size()));
    Row row;
    for (size_t i = 0; i < metadata.columns.size(); ++i) {
        const bool null =
            !nulls.empty() && (std::to_integer<unsigned>(nulls[i / 8]) >> (i % 8) & 1u) != 0;
        row.values.push_back(null ? RawValue{}
                                  : RawValue::Decode(reader, metadata.columns[i].type, Place::Row));
    }
    return row;
}

}  // namespace quarv::localdb::tds
