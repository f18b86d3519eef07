#include "localdb/tds/PacketHeader.h"

#include <QString>

#include "localdb/tds/ByteReader.h"

namespace quarv::localdb::tds {

namespace {

bool IsPacketType(uint8_t type) {
    switch (static_cast<PacketType>(type)) {
        case PacketType::Batch:
        case PacketType::Rpc:
        case PacketType::Reply:
        case PacketType::Attention:
        case PacketType::Bulk:
        case PacketType::Transaction:
        case PacketType::Login7:
        case PacketType::Sspi:
        case PacketType::Prelogin:
            return true;
    }
    return false;
}

}  // namespace

void PacketHeader::Encode(std::span<std::byte, Size> out) const {
    out[0] = static_cast<std::byte>(type);
    out[1] = std::byte{status};
    out[2] = static_cast<std::byte>(length >> 8);
    out[3] = static_cast<std::byte>(length & 0xFF);
    out[4] = static_cast<std::byte>(spid >> 8);
    out[5] = static_cast<std::byte>(spid & 0xFF);
    out[6] = std::byte{id};
    out[7] = std::byte{0};
}

PacketHeader PacketHeader::Decode(std::span<const std::byte, Size> bytes, uint16_t largest) {
    ByteReader reader(bytes);
    PacketHeader header;
    const uint8_t type = reader.Peek();
    if (!IsPacketType(type)) {
        reader.Fail(Fault::PacketType, QStringLiteral("0x%1").arg(type, 2, 16, QChar(u'0')));
    }
    header.type = static_cast<PacketType>(reader.U8());
    header.status = reader.U8();
    header.length = reader.U16Big();
    if (header.length < Size || header.length > largest) {
        throw ProtocolError(Fault::PacketLength, 2, QString::number(header.length));
    }
    header.spid = reader.U16Big();
    header.id = reader.U8();
    return header;
}

}  // namespace quarv::localdb::tds
