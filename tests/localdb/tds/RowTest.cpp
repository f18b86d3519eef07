#include "localdb/tds/Row.h"

#include "TokenChecks.h"

namespace quarv::localdb::tds {

namespace {

ColMetadata IntAndText() {
    ColMetadata metadata;
    metadata.columns.resize(2);
    metadata.columns[0].type.code = TypeCode::IntN;
    metadata.columns[0].type.size = 4;
    metadata.columns[1].type.code = TypeCode::NVarChar;
    metadata.columns[1].type.size = 20;
    return metadata;
}

std::string EncodedRow(const Row& row, const ColMetadata& metadata, Token form) {
    return Written([&](ByteWriter& writer) { row.Encode(writer, metadata, form); });
}

const RawValue Seven{false, QByteArray::fromHex("07000000")};
const RawValue LetterA{false, QByteArray::fromHex("6100")};

Row DecodeRow(const char* hex, const ColMetadata& metadata) {
    const auto bytes = Hex(hex);
    ByteReader reader(bytes);
    Row row = Row::Decode(reader, metadata);
    EXPECT_TRUE(reader.AtEnd());
    return row;
}

}  // namespace

TEST(RowTest, ValuesFollowEachOther) {
    const ColMetadata metadata = IntAndText();
    constexpr auto Bytes = "D1 04 07 00 00 00 02 00 61 00";
    EXPECT_EQ(EncodedRow({{Seven, LetterA}}, metadata, Token::Row), Bytes);
    EXPECT_THAT(DecodeRow(Bytes, metadata).values, testing::ElementsAre(Seven, LetterA));
    ExpectEveryCutIsSeen(Bytes, [&](ByteReader& reader) { Row::Decode(reader, metadata); });
}

TEST(RowTest, PlainRowMarksNullsInTheirFraming) {
    const ColMetadata metadata = IntAndText();
    constexpr auto Bytes = "D1 00 FF FF";
    EXPECT_EQ(EncodedRow({{RawValue{}, RawValue{}}}, metadata, Token::Row), Bytes);
    EXPECT_THAT(DecodeRow(Bytes, metadata).values, testing::ElementsAre(RawValue{}, RawValue{}));
}

TEST(RowTest, BitmapNamesNullsFromTheLowestBit) {
    const ColMetadata metadata = IntAndText();
    constexpr auto Bytes = "D2 02 04 07 00 00 00";
    EXPECT_EQ(EncodedRow({{Seven, RawValue{}}}, metadata, Token::NbcRow), Bytes);
    EXPECT_THAT(DecodeRow(Bytes, metadata).values, testing::ElementsAre(Seven, RawValue{}));
    ExpectEveryCutIsSeen(Bytes, [&](ByteReader& reader) { Row::Decode(reader, metadata); });
}

TEST(RowTest, NinthColumnHasItsBitInTheSecondByte) {
    ColMetadata metadata;
    metadata.columns.resize(9, IntAndText().columns[0]);
    Row row;
    row.values.resize(9, Seven);
    row.values[8] = RawValue{};
    EXPECT_EQ(EncodedRow(row, metadata, Token::NbcRow).substr(0, 8), "D2 00 01");
}

TEST(RowTest, ValueLongerThanItsColumnIsRefused) {
    const ColMetadata metadata = IntAndText();
    const auto bytes = Hex("D1 04 07 00 00 00 16 00");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  Row::Decode(reader, metadata);
              }),
              Fault::ValueLength);
}

TEST(RowTest, IntegerOfThreeBytesIsRefused) {
    const ColMetadata metadata = IntAndText();
    const auto bytes = Hex("D1 03 07 00 00 FF FF");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  Row::Decode(reader, metadata);
              }),
              Fault::ValueLength);
}

}  // namespace quarv::localdb::tds
