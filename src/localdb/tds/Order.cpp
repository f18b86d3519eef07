#include "localdb/tds/Order.h"

namespace quarv::localdb::tds {

void Order::Encode(ByteWriter& writer) const {
    writer.U8(static_cast<uint8_t>(Token::Order));
    writer.U16(static_cast<uint16_t>(2 * columns.size()));
    for (const uint16_t column : columns) writer.U16(column);
}

Order Order::Decode(ByteReader& reader) {
    ExpectToken(reader, Token::Order);
    const size_t length = reader.U16();
    if (length % 2 != 0) reader.Fail(Fault::TokenLength);
    Order order;
    for (size_t i = 0; i < length; i += 2) order.columns.push_back(reader.U16());
    return order;
}

}  // namespace quarv::localdb::tds
