#include "localdb/server/RowEncoder.h"

#include <gtest/gtest.h>

#include <array>

#include "Datums.h"
#include "localdb/tds/ColMetadata.h"
#include "localdb/tds/NumericValues.h"
#include "localdb/tds/Row.h"

namespace quarv::localdb::server {

using engine::Column;
using engine::Datum;
using engine::TypeKind;

namespace {

struct ValueCase {
    const char* name;
    engine::SqlType type;
    Datum datum;
    const char* content;
};

constexpr std::array<std::byte, 16> SixteenBytes{std::byte{1}, std::byte{2}};

Datum Bytes(size_t count) {
    Datum datum;
    datum.null = false;
    datum.bytes = std::span(SixteenBytes).first(count);
    return datum;
}

Datum Exact(uint64_t magnitude, bool negative) {
    Datum datum;
    datum.null = false;
    datum.magnitude = magnitude;
    datum.negative = negative;
    return datum;
}

Datum Real(double value) {
    Datum datum;
    datum.null = false;
    datum.real = value;
    return datum;
}

constexpr int32_t Max = engine::SqlType::Max;

// Every kind of the engine's.
const ValueCase Cases[] = {
    {"Bit", {TypeKind::Bit, 0, 0, 0}, Whole(1), "01"},
    {"TinyInt", {TypeKind::TinyInt, 0, 0, 0}, Whole(255), "ff"},
    {"SmallInt", {TypeKind::SmallInt, 0, 0, 0}, Whole(-2), "feff"},
    {"Int", {TypeKind::Int, 0, 0, 0}, Whole(-2), "feffffff"},
    {"BigInt", {TypeKind::BigInt, 0, 0, 0}, Whole(-2), "feffffffffffffff"},
    {"Real", {TypeKind::Real, 0, 0, 0}, Real(1.5), "0000c03f"},
    {"Float", {TypeKind::Float, 0, 0, 0}, Real(1.5), "000000000000f83f"},
    {"SmallMoney", {TypeKind::SmallMoney, 0, 0, 0}, Whole(10000), "10270000"},
    {"Money", {TypeKind::Money, 0, 0, 0}, Whole(10000), "0000000010270000"},
    {"Decimal", {TypeKind::Decimal, 0, 10, 2}, Exact(12345, true), "003930000000000000"},
    {"Numeric", {TypeKind::Numeric, 0, 9, 2}, Exact(12345, false), "0139300000"},
    {"Char", {TypeKind::Char, 3, 0, 0}, Text("a\xC3\xA4 "), "61e420"},
    {"VarChar", {TypeKind::VarChar, 5, 0, 0}, Text("a\xC3\xA4"), "61e4"},
    {"VarCharMax", {TypeKind::VarChar, Max, 0, 0}, Text("a"), "61"},
    {"NChar", {TypeKind::NChar, 1, 0, 0}, Text("\xC3\xA4"), "e400"},
    {"NVarChar", {TypeKind::NVarChar, 5, 0, 0}, Text("\xC3\xA4"), "e400"},
    {"NVarCharMax", {TypeKind::NVarChar, Max, 0, 0}, Text("\xC3\xA4"), "e400"},
    {"Text", {TypeKind::Text, 0, 0, 0}, Text("\xC3\xA4"), "e4"},
    {"NText", {TypeKind::NText, 0, 0, 0}, Text("\xC3\xA4"), "e400"},
    {"Binary", {TypeKind::Binary, 2, 0, 0}, Bytes(2), "0102"},
    {"VarBinary", {TypeKind::VarBinary, 2, 0, 0}, Bytes(2), "0102"},
    {"VarBinaryMax", {TypeKind::VarBinary, Max, 0, 0}, Bytes(2), "0102"},
    {"Image", {TypeKind::Image, 0, 0, 0}, Bytes(2), "0102"},
    {"Date", {TypeKind::Date, 0, 0, 0}, Whole(3'652'058), "dab937"},
    {"Time", {TypeKind::Time, 0, 0, 7}, Whole(12'345'678), "4e61bc0000"},
    {"SmallDateTime", {TypeKind::SmallDateTime, 0, 0, 0}, Whole(1441), "01000100"},
    {"DateTime", {TypeKind::DateTime, 0, 0, 0}, Whole(-1), "ffffffffff818b01"},
    {"DateTime2", {TypeKind::DateTime2, 0, 0, 0}, Whole(864'000'000'000), "000000010000"},
    {"DateTimeOffset",
     {TypeKind::DateTimeOffset, 0, 0, 0},
     Offset(864'000'000'000, 60),
     "0000000100003c00"},
    {"UniqueIdentifier",
     {TypeKind::UniqueIdentifier, 0, 0, 0},
     Bytes(16),
     "00000000000000000000010200000000"},
    {"RowVersion", {TypeKind::RowVersion, 0, 0, 0}, Bytes(8), "0102000000000000"},
    {"Xml", {TypeKind::Xml, 0, 0, 0}, Text("<a/>"), "3c0061002f003e00"},
};

class RowEncoderCases : public testing::TestWithParam<ValueCase> {};

}  // namespace

TEST_P(RowEncoderCases, ValueAndNullReadBack) {
    const ValueCase& c = GetParam();
    const std::array columns{Column{QStringLiteral("c"), c.type, true, false, false}};
    tds::BufferWriter writer;
    RowEncoder encoder;
    encoder.Begin(writer, columns);
    encoder.Write(writer, std::span(&c.datum, 1));
    const Datum null;
    encoder.Write(writer, std::span(&null, 1));

    tds::ByteReader reader(writer.Written());
    const auto metadata = tds::ColMetadata::Decode(reader);
    const auto row = tds::Row::Decode(reader, metadata);
    EXPECT_EQ(row.values[0].bytes.toHex(), QByteArray(c.content));
    EXPECT_TRUE(tds::Row::Decode(reader, metadata).values[0].null);
    EXPECT_TRUE(reader.AtEnd());
}

INSTANTIATE_TEST_SUITE_P(All, RowEncoderCases, testing::ValuesIn(Cases),
                         [](const auto& param) { return std::string(param.param.name); });

TEST(RowEncoderTest, BitmapIsClearedBetweenRows) {
    const std::array columns{Column{}, Column{}};
    tds::BufferWriter writer;
    RowEncoder encoder;
    encoder.Begin(writer, columns);
    const std::array first{Datum{}, Whole(1)};
    const std::array second{Whole(2), Datum{}};
    const std::array third{Whole(3), Whole(4)};
    encoder.Write(writer, first);
    encoder.Write(writer, second);
    encoder.Write(writer, third);

    tds::ByteReader reader(writer.Written());
    const auto metadata = tds::ColMetadata::Decode(reader);
    EXPECT_TRUE(tds::Row::Decode(reader, metadata).values[0].null);
    const auto row = tds::Row::Decode(reader, metadata);
    EXPECT_FALSE(row.values[0].null);
    EXPECT_TRUE(row.values[1].null);
    EXPECT_EQ(reader.Peek(), 0xD1);
}

}  // namespace quarv::localdb::server
