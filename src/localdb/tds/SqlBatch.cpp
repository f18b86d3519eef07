#include "localdb/tds/SqlBatch.h"

namespace quarv::localdb::tds {

void SqlBatch::Encode(ByteWriter& writer) const {
    headers.Encode(writer);
    writer.Utf16(sql);
}

SqlBatch SqlBatch::Decode(std::span<const std::byte> body) {
    ByteReader reader(body);
    SqlBatch batch;
    batch.headers = AllHeaders::Decode(reader);
    const size_t at = reader.Position();
    batch.sql = TextOfUtf16(reader.Bytes(reader.Remaining()), at);
    return batch;
}

}  // namespace quarv::localdb::tds
