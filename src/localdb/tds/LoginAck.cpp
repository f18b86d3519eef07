#include "localdb/tds/LoginAck.h"

namespace quarv::localdb::tds {

namespace {

constexpr size_t FixedBytes = 1 + 4 + 1 + 4;

}  // namespace

void LoginAck::Encode(ByteWriter& writer) const {
    const QStringView name = QStringView(program).left(255);
    writer.U8(static_cast<uint8_t>(Token::LoginAck));
    writer.U16(static_cast<uint16_t>(FixedBytes + 2 * static_cast<size_t>(name.size())));
    writer.U8(interface);
    writer.U32Big(tdsVersion);
    writer.ShortText(name);
    writer.U8(version.major);
    writer.U8(version.minor);
    writer.U16Big(version.build);
}

LoginAck LoginAck::Decode(ByteReader& reader) {
    ExpectToken(reader, Token::LoginAck);
    const size_t length = reader.U16();
    const size_t begin = reader.Position();
    LoginAck ack;
    ack.interface = reader.U8();
    ack.tdsVersion = reader.U32Big();
    ack.program = reader.ShortText();
    ack.version.major = reader.U8();
    ack.version.minor = reader.U8();
    ack.version.build = reader.U16Big();
    if (reader.Position() - begin != length) throw ProtocolError(Fault::TokenLength, begin - 2);
    return ack;
}

}  // namespace quarv::localdb::tds
