#include "localdb/server/OlderTypes.h"

#include <gtest/gtest.h>

#include <array>

#include "Datums.h"
#include "localdb/server/MomentText.h"
#include "localdb/tds/Row.h"

namespace quarv::localdb::server {

using engine::Column;
using engine::Datum;
using engine::SqlType;
using engine::TypeKind;
using tds::Dialect;
using tds::TypeCode;

namespace {

constexpr int32_t Max = SqlType::Max;

constexpr std::array<std::byte, 2> TwoBytes{std::byte{1}, std::byte{2}};

Datum Bytes() {
    Datum datum;
    datum.null = false;
    datum.bytes = TwoBytes;
    return datum;
}

struct OlderCase {
    const char* name;
    Dialect dialect;
    SqlType type;
    Datum datum;
    TypeCode code;
    uint32_t size;
    const char* content;  // in hexadecimal, or as text
    bool text = false;
};

// 2024-02-29 12:34:56.7891234 in ticks since 0001-01-01.
constexpr int64_t Leap = (738'944LL * 86'400 + 45'296) * 10'000'000 + 7'891'234;

const OlderCase Cases[] = {
    {"Date72",
     Dialect::V72,
     {TypeKind::Date, 0, 0, 0},
     Whole(3'652'058),
     TypeCode::NVarChar,
     20,
     "9999-12-31",
     true},
    {"FirstDate71",
     Dialect::V71,
     {TypeKind::Date, 0, 0, 0},
     Whole(0),
     TypeCode::NVarChar,
     20,
     "0001-01-01",
     true},
    {"Time0",
     Dialect::V72,
     {TypeKind::Time, 0, 0, 0},
     Whole(863'999'999'999),
     TypeCode::NVarChar,
     16,
     "23:59:59",
     true},
    {"Time7",
     Dialect::V72,
     {TypeKind::Time, 0, 0, 7},
     Whole(863'999'999'999),
     TypeCode::NVarChar,
     32,
     "23:59:59.9999999",
     true},
    {"DateTime2",
     Dialect::V71,
     {TypeKind::DateTime2, 0, 0, 3},
     Whole(Leap),
     TypeCode::NVarChar,
     46,
     "2024-02-29 12:34:56.789",
     true},
    {"OffsetWest",
     Dialect::V72,
     {TypeKind::DateTimeOffset, 0, 0, 0},
     Offset(Leap, -330),
     TypeCode::NVarChar,
     52,
     "2024-02-29 07:04:56 -05:30",
     true},
    {"OffsetEast",
     Dialect::V72,
     {TypeKind::DateTimeOffset, 0, 0, 7},
     Offset(Leap, 840),
     TypeCode::NVarChar,
     68,
     "2024-03-01 02:34:56.7891234 +14:00",
     true},
    {"Date73",
     Dialect::V73A,
     {TypeKind::Date, 0, 0, 0},
     Whole(3'652'058),
     TypeCode::Date,
     3,
     "dab937"},
    {"VarCharMax71",
     Dialect::V71,
     {TypeKind::VarChar, Max, 0, 0},
     Text("a"),
     TypeCode::Text,
     0x7FFFFFFF,
     "61"},
    {"NVarCharMax71",
     Dialect::V71,
     {TypeKind::NVarChar, Max, 0, 0},
     Text("a"),
     TypeCode::NText,
     0x7FFFFFFE,
     "6100"},
    {"VarBinaryMax71",
     Dialect::V71,
     {TypeKind::VarBinary, Max, 0, 0},
     Bytes(),
     TypeCode::Image,
     0x7FFFFFFF,
     "0102"},
    {"Xml71",
     Dialect::V71,
     {TypeKind::Xml, 0, 0, 0},
     Text("<"),
     TypeCode::NText,
     0x7FFFFFFE,
     "3c00"},
    {"NVarCharMax72",
     Dialect::V72,
     {TypeKind::NVarChar, Max, 0, 0},
     Text("a"),
     TypeCode::NVarChar,
     tds::MaxSize,
     "6100"},
    {"NVarChar71",
     Dialect::V71,
     {TypeKind::NVarChar, 5, 0, 0},
     Text("a"),
     TypeCode::NVarChar,
     10,
     "6100"},
};

class OlderForms : public testing::TestWithParam<OlderCase> {};

QByteArray Wide(const char* text) {
    QByteArray bytes;
    for (; *text != 0; ++text) bytes.append(*text).append('\0');
    return bytes.toHex();
}

}  // namespace

TEST_P(OlderForms, ValueAndNullReadBack) {
    const OlderCase& c = GetParam();
    const std::array columns{Column{QStringLiteral("c"), c.type, true, false, false}, Column{}};
    tds::BufferWriter writer;
    RowEncoder encoder;
    encoder.Begin(writer, columns, c.dialect);
    const std::array row{c.datum, Datum{}};
    encoder.Write(writer, row);
    const std::array nulls{Datum{}, Whole(7)};
    encoder.Write(writer, nulls);

    tds::ByteReader reader(writer.Written());
    const auto metadata = tds::ColMetadata::Decode(reader, c.dialect);
    EXPECT_EQ(metadata.columns[0].type.code, c.code);
    EXPECT_EQ(metadata.columns[0].type.size, c.size);
    // Nulls stand in their columns' places: there is no bitmap yet.
    EXPECT_EQ(reader.Peek(), 0xD1);
    const auto first = tds::Row::Decode(reader, metadata);
    EXPECT_EQ(first.values[0].bytes.toHex(), c.text ? Wide(c.content) : QByteArray(c.content));
    EXPECT_TRUE(first.values[1].null);
    EXPECT_EQ(reader.Peek(), 0xD1);
    const auto second = tds::Row::Decode(reader, metadata);
    EXPECT_TRUE(second.values[0].null);
    EXPECT_FALSE(second.values[1].null);
    EXPECT_TRUE(reader.AtEnd());
}

INSTANTIATE_TEST_SUITE_P(All, OlderForms, testing::ValuesIn(Cases),
                         [](const auto& param) { return std::string(param.param.name); });

}  // namespace quarv::localdb::server
