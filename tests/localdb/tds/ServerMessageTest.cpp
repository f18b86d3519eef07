#include "TokenChecks.h"
#include "localdb/tds/ServerMessage.h"

namespace quarv::localdb::tds {

namespace {

ServerMessage SampleMessage(uint8_t severity) {
    ServerMessage message;
    message.number = 208;
    message.state = 1;
    message.severity = severity;
    message.text = QStringLiteral("No x");
    message.server = QStringLiteral("s");
    message.procedure = QStringLiteral("p");
    message.line = 3;
    return message;
}

constexpr auto ErrorHex =
    "AA 1A 00 D0 00 00 00 01 10 04 00 4E 00 6F 00 20 00 78 00 01 73 00 01 70 00 03 00 00 00";

}  // namespace

TEST(ServerMessageTest, ErrorCarriesNumberTextAndLine) {
    const ServerMessage message = SampleMessage(16);
    EXPECT_EQ(ExpectTokenBytes<ServerMessage>(message, ErrorHex), message);
}

TEST(ServerMessageTest, SeverityBelowElevenIsInformation) {
    EXPECT_EQ(Encoded(SampleMessage(10)).substr(0, 2), "AB");
    EXPECT_EQ(Encoded(SampleMessage(11)).substr(0, 2), "AA");
}

TEST(ServerMessageTest, LengthThatDoesNotFitIsRefusedAtItsPlace) {
    auto bytes = Hex(ErrorHex);
    bytes[1] = std::byte{0x1B};
    size_t position = 0;
    EXPECT_EQ(FaultOf(
                  [&] {
                      ByteReader reader(bytes);
                      ServerMessage::Decode(reader);
                  },
                  &position),
              Fault::TokenLength);
    EXPECT_EQ(position, 1u);
}

TEST(ServerMessageTest, TextBeyondTheTokensLengthIsCutBeforeHalfACharacter) {
    ServerMessage message = SampleMessage(16);
    message.text = QString(29999, QLatin1Char('a')) + QString::fromUtf8("\xF0\x9F\x98\x80");
    BufferWriter writer;
    message.Encode(writer);
    ByteReader reader(writer.Written());
    EXPECT_EQ(ServerMessage::Decode(reader).text, QString(29999, QLatin1Char('a')));
    EXPECT_TRUE(reader.AtEnd());
}

}  // namespace quarv::localdb::tds
