#include "localdb/tds/ServerMessage.h"

#include <algorithm>

namespace quarv::localdb::tds {

namespace {

constexpr qsizetype LongestName = 255;
constexpr size_t FixedBytes = 4 + 1 + 1 + 2 + 1 + 1;

size_t LineBytes(Dialect dialect) {
    return dialect == Dialect::V71 ? 2 : 4;
}

// Cut so that no half of a surrogate pair stays behind.
QStringView Cut(const QString& text, qsizetype longest) {
    if (text.size() <= longest) return text;
    return QStringView(text).left(text.at(longest - 1).isHighSurrogate() ? longest - 1 : longest);
}

}  // namespace

void ServerMessage::Encode(ByteWriter& writer, Dialect dialect) const {
    const QStringView shortText = Cut(text, LongestText);
    const QStringView shortServer = Cut(server, LongestName);
    const QStringView shortProcedure = Cut(procedure, LongestName);
    const auto units =
        static_cast<size_t>(shortText.size() + shortServer.size() + shortProcedure.size());
    writer.U8(static_cast<uint8_t>(IsError() ? Token::Error : Token::Info));
    writer.U16(static_cast<uint16_t>(FixedBytes + LineBytes(dialect) + 2 * units));
    writer.U32(static_cast<uint32_t>(number));
    writer.U8(state);
    writer.U8(severity);
    writer.MediumText(shortText);
    writer.ShortText(shortServer);
    writer.ShortText(shortProcedure);
    if (dialect == Dialect::V71) {
        writer.U16(static_cast<uint16_t>(std::min<uint32_t>(line, 0xFFFF)));
    } else {
        writer.U32(line);
    }
}

ServerMessage ServerMessage::Decode(ByteReader& reader, Dialect dialect) {
    const auto token = static_cast<Token>(reader.Peek());
    if (token != Token::Error && token != Token::Info) reader.Fail(Fault::UnexpectedToken);
    reader.U8();
    const size_t length = reader.U16();
    const size_t begin = reader.Position();
    ServerMessage message;
    message.number = reader.I32();
    message.state = reader.U8();
    message.severity = reader.U8();
    message.text = reader.MediumText();
    message.server = reader.ShortText();
    message.procedure = reader.ShortText();
    message.line = dialect == Dialect::V71 ? reader.U16() : reader.U32();
    if (reader.Position() - begin != length) throw ProtocolError(Fault::TokenLength, begin - 2);
    return message;
}

}  // namespace quarv::localdb::tds
