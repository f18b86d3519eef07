#include "localdb/tds/AllHeaders.h"

namespace quarv::localdb::tds {

namespace {

constexpr uint16_t TransactionHeader = 2;
constexpr uint32_t LengthSize = 4;
constexpr uint32_t HeaderStart = 6;  // length and type
constexpr uint32_t TransactionSize = HeaderStart + 12;

}  // namespace

void AllHeaders::Encode(ByteWriter& writer) const {
    writer.U32(LengthSize + TransactionSize);
    writer.U32(TransactionSize);
    writer.U16(TransactionHeader);
    writer.U64(transaction);
    writer.U32(outstanding);
}

AllHeaders AllHeaders::Decode(ByteReader& reader) {
    const size_t at = reader.Position();
    const uint32_t total = reader.U32();
    if (total < LengthSize) throw ProtocolError(Fault::HeadersLength, at);
    ByteReader part(reader.Bytes(total - LengthSize), ByteReader::Ending::Final, at + LengthSize);
    AllHeaders headers;
    while (!part.AtEnd()) {
        const size_t headerAt = part.Position();
        const uint32_t length = part.U32();
        if (length < HeaderStart) throw ProtocolError(Fault::HeadersLength, headerAt);
        const uint16_t type = part.U16();
        ByteReader data(part.Bytes(length - HeaderStart), ByteReader::Ending::Final,
                        headerAt + HeaderStart);
        if (type != TransactionHeader) continue;
        if (length != TransactionSize) throw ProtocolError(Fault::HeadersLength, headerAt);
        headers.transaction = data.U64();
        headers.outstanding = data.U32();
    }
    return headers;
}

}  // namespace quarv::localdb::tds
