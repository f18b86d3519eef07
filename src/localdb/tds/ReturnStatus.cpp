#include "localdb/tds/ReturnStatus.h"

namespace quarv::localdb::tds {

void ReturnStatus::Encode(ByteWriter& writer) const {
    writer.U8(static_cast<uint8_t>(Token::ReturnStatus));
    writer.U32(static_cast<uint32_t>(value));
}

ReturnStatus ReturnStatus::Decode(ByteReader& reader) {
    ExpectToken(reader, Token::ReturnStatus);
    return {reader.I32()};
}

}  // namespace quarv::localdb::tds
