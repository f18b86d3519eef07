// Row: one row of values, plain (ROW) or with a bitmap of its nulls (NBCROW) ([MS-TDS], "ROW",
// "NBCROW"). Rows that a server streams are written piece by piece with BeginRow and BeginNbcRow.
#pragma once

#include <vector>

#include "localdb/tds/ColMetadata.h"
#include "localdb/tds/RawValue.h"

namespace quarv::localdb::tds {

// The values follow, nulls among them, in the order of the columns.
inline void BeginRow(ByteWriter& writer) {
    writer.U8(static_cast<uint8_t>(Token::Row));
}
// The values that are not null follow. The bitmap has a bit for each column, the first in the
// lowest bit of its first byte, set where the value is null; its unused bits are 0.
inline void BeginNbcRow(ByteWriter& writer, std::span<const std::byte> nulls) {
    writer.U8(static_cast<uint8_t>(Token::NbcRow));
    writer.Bytes(nulls);
}
inline size_t NullBitmapSize(size_t columns) {
    return (columns + 7) / 8;
}

struct Row {
    std::vector<RawValue> values;

    // As ROW, or as NBCROW.
    void Encode(ByteWriter& writer, const ColMetadata& metadata, Token form) const;
    // Either form. Raises UnexpectedToken and what reading a value raises.
    static Row Decode(ByteReader& reader, const ColMetadata& metadata);
};

}  // namespace quarv::localdb::tds
