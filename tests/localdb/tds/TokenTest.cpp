#include "TokenChecks.h"
#include "localdb/tds/ColMetadata.h"
#include "localdb/tds/Done.h"
#include "localdb/tds/EnvChange.h"
#include "localdb/tds/LoginAck.h"
#include "localdb/tds/Order.h"
#include "localdb/tds/ReturnStatus.h"
#include "localdb/tds/ReturnValue.h"
#include "localdb/tds/ServerMessage.h"

namespace quarv::localdb::tds {

TEST(DoneTest, CarriesStatusCommandAndCount) {
    const Done done{Token::Done, Done::More | Done::Count, 0xC1, 258};
    const Done read =
        ExpectTokenBytes<Done>(done, "FD 11 00 C1 00 02 01 00 00 00 00 00 00", &Done::Decode);
    EXPECT_EQ(read, done);
}

TEST(DoneTest, ThreeKindsHaveThreeTokens) {
    EXPECT_EQ(Encoded(Done{Token::Done, 0, 0, 0}).substr(0, 2), "FD");
    EXPECT_EQ(Encoded(Done{Token::DoneProc, 0, 0, 0}).substr(0, 2), "FE");
    EXPECT_EQ(Encoded(Done{Token::DoneInProc, 0, 0, 0}).substr(0, 2), "FF");
}

TEST(DoneTest, AnotherTokenIsRefused) {
    const auto bytes = Hex("79 11 00 C1 00 02 01 00 00 00 00 00 00");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  Done::Decode(reader);
              }),
              Fault::UnexpectedToken);
}

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

TEST(ServerMessageTest, ErrorCarriesNumberTextAndLine) {
    const ServerMessage message = SampleMessage(16);
    EXPECT_EQ(ExpectTokenBytes<ServerMessage>(message, ErrorHex, &ServerMessage::Decode), message);
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

TEST(EnvChangeTest, DatabaseCarriesNewAndOldName) {
    const EnvChange change =
        EnvChange::OfText(EnvChange::Kind::Database, QStringLiteral("ab"), QStringLiteral("c"));
    EXPECT_EQ(ExpectTokenBytes<EnvChange>(change, "E3 09 00 01 02 61 00 62 00 01 63 00",
                                          &EnvChange::Decode),
              change);
}

TEST(EnvChangeTest, CollationCarriesFiveBytesAndNone) {
    const EnvChange change = EnvChange::OfBytes(EnvChange::Kind::SqlCollation,
                                                QByteArray::fromHex("0904D00034"), QByteArray());
    EXPECT_EQ(
        ExpectTokenBytes<EnvChange>(change, "E3 08 00 07 05 09 04 D0 00 34 00", &EnvChange::Decode),
        change);
}

TEST(EnvChangeTest, CommitCarriesItsDescriptorAsTheOldValue) {
    const EnvChange change = EnvChange::OfBytes(EnvChange::Kind::CommitTransaction, QByteArray(),
                                                QByteArray::fromHex("0102030405060708"));
    EXPECT_EQ(ExpectTokenBytes<EnvChange>(change, "E3 0B 00 09 00 08 01 02 03 04 05 06 07 08",
                                          &EnvChange::Decode),
              change);
}

TEST(EnvChangeTest, UnknownKindIsRefused) {
    const auto bytes = Hex("E3 03 00 63 00 00");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  EnvChange::Decode(reader);
              }),
              Fault::TokenLength);
}

TEST(LoginAckTest, VersionStandsBigEndian) {
    LoginAck ack;
    ack.program = QStringLiteral("q");
    ack.version = {15, 0, 0x104D};
    EXPECT_EQ(ExpectTokenBytes<LoginAck>(ack, "AD 0C 00 01 74 00 00 04 01 71 00 0F 00 10 4D",
                                         &LoginAck::Decode),
              ack);
}

TEST(LoginAckTest, LengthThatDoesNotFitIsRefused) {
    const auto bytes = Hex("AD 0B 00 01 74 00 00 04 01 71 00 0F 00 10 4D");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  LoginAck::Decode(reader);
              }),
              Fault::TokenLength);
}

TEST(ReturnStatusTest, IsASignedNumber) {
    const ReturnStatus read =
        ExpectTokenBytes<ReturnStatus>({-6}, "79 FA FF FF FF", &ReturnStatus::Decode);
    EXPECT_EQ(read.value, -6);
}

TEST(OrderTest, CountsItsColumnsInBytes) {
    const Order read = ExpectTokenBytes<Order>({{1, 300}}, "A9 04 00 01 00 2C 01", &Order::Decode);
    EXPECT_EQ(read.columns, (std::vector<uint16_t>{1, 300}));
}

TEST(OrderTest, OddLengthIsRefused) {
    const auto bytes = Hex("A9 03 00 01 00 2C");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  Order::Decode(reader);
              }),
              Fault::TokenLength);
}

TEST(ReturnValueTest, CarriesTypeAndValue) {
    ReturnValue value;
    value.ordinal = 2;
    value.name = QStringLiteral("@a");
    value.type.code = TypeCode::IntN;
    value.type.size = 4;
    value.value = {false, QByteArray::fromHex("07000000")};
    const ReturnValue read = ExpectTokenBytes<ReturnValue>(
        value, "AC 02 00 02 40 00 61 00 01 00 00 00 00 00 00 26 04 04 07 00 00 00",
        &ReturnValue::Decode);
    EXPECT_EQ(read.name, QStringLiteral("@a"));
    EXPECT_EQ(read.value, value.value);
}

ColumnInfo Column(const char* name, TypeCode code, uint32_t size, uint16_t flags) {
    ColumnInfo column;
    column.name = QString::fromLatin1(name);
    column.type.code = code;
    column.type.size = size;
    column.flags = flags;
    return column;
}

TEST(ColMetadataTest, DescribesEachColumn) {
    ColMetadata metadata;
    metadata.columns.push_back(Column("id", TypeCode::IntN, 4, ColumnInfo::Identity));
    metadata.columns.push_back(
        Column("n", TypeCode::NVarChar, 100, ColumnInfo::Nullable | ColumnInfo::Updatable));
    const ColMetadata read =
        ExpectTokenBytes<ColMetadata>(metadata,
                                      "81 02 00"
                                      "00 00 00 00 10 00 26 04 02 69 00 64 00"
                                      "00 00 00 00 09 00 E7 64 00 09 04 D0 00 34 01 6E 00",
                                      &ColMetadata::Decode);
    EXPECT_EQ(read.columns, metadata.columns);
}

TEST(ColMetadataTest, LongTypesNameTheirTable) {
    ColMetadata metadata;
    metadata.columns.push_back(Column("t", TypeCode::Text, 0x7FFFFFFF, ColumnInfo::Nullable));
    metadata.columns[0].table = {QStringLiteral("a"), QStringLiteral("b")};
    const ColMetadata read = ExpectTokenBytes<ColMetadata>(
        metadata,
        "81 01 00 00 00 00 00 01 00 23 FF FF FF 7F 09 04 D0 00 34 02 01 00 61 00 01 00 62 00"
        "01 74 00",
        &ColMetadata::Decode);
    EXPECT_EQ(read.columns, metadata.columns);
}

TEST(ColMetadataTest, NoColumnsMeansNoMetadata) {
    EXPECT_TRUE(
        ExpectTokenBytes<ColMetadata>({}, "81 FF FF", &ColMetadata::Decode).columns.empty());
}

TEST(ColMetadataTest, UnknownTypeIsRefusedAtItsCode) {
    const auto bytes = Hex("81 01 00 00 00 00 00 01 00 77");
    size_t position = 0;
    EXPECT_EQ(FaultOf(
                  [&] {
                      ByteReader reader(bytes);
                      ColMetadata::Decode(reader);
                  },
                  &position),
              Fault::TypeCode);
    EXPECT_EQ(position, 9u);
}

}  // namespace quarv::localdb::tds
