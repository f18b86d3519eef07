#include "localdb/tds/SqlBatch.h"

namespace quarv::localdb::tds {

void SqlBatch::Encode(ByteWriter& writer, Dialect dialect) const {
    if (dialect != Dialect::V71) headers.Encode(writer);
    writer.Utf16(sql);
}

SqlBatch SqlBatch::Decode(std::span<const std::byte> body, Dialect dialect) {
    ByteReader reader(body);
    SqlBatch batch;
    if (dialect != Dialect::V71) batch.headers = AllHeaders::Decode(reader);
    const size_t at = reader.Position();
    batch.sql = TextOfUtf16(reader.Bytes(reader.Remaining()), at);
    return batch;
}

}  // namespace quarv::localdb::tds
