#include "localdb/tds/TypeInfo.h"

#include "TokenChecks.h"
#include "localdb/tds/RawValue.h"

namespace quarv::localdb::tds {

namespace {

// A type, how it is described, a value's content, and how that value is framed in a row.
struct TypeCase {
    const char* name;
    TypeCode code;
    uint32_t size;
    uint8_t precision;
    uint8_t scale;
    const char* description;
    const char* content;
    const char* framed;
    const char* framedNull;  // empty: it has none
};

const TypeCase Cases[] = {
    {"TinyInt", TypeCode::Int1, 1, 0, 0, "30", "FF", "FF", ""},
    {"FixedBit", TypeCode::Bit, 1, 0, 0, "32", "01", "01", ""},
    {"SmallInt", TypeCode::Int2, 2, 0, 0, "34", "01 80", "01 80", ""},
    {"Int", TypeCode::Int4, 4, 0, 0, "38", "01 02 03 04", "01 02 03 04", ""},
    {"BigInt", TypeCode::Int8, 8, 0, 0, "7F", "01 02 03 04 05 06 07 08", "01 02 03 04 05 06 07 08",
     ""},
    {"Real", TypeCode::Real, 4, 0, 0, "3B", "00 00 80 3F", "00 00 80 3F", ""},
    {"Float", TypeCode::Float, 8, 0, 0, "3E", "00 00 00 00 00 00 F0 3F", "00 00 00 00 00 00 F0 3F",
     ""},
    {"Money", TypeCode::Money, 8, 0, 0, "3C", "00 00 00 00 10 27 00 00", "00 00 00 00 10 27 00 00",
     ""},
    {"SmallMoney", TypeCode::SmallMoney, 4, 0, 0, "7A", "10 27 00 00", "10 27 00 00", ""},
    {"DateTime", TypeCode::DateTime, 8, 0, 0, "3D", "01 00 00 00 02 00 00 00",
     "01 00 00 00 02 00 00 00", ""},
    {"SmallDateTime", TypeCode::SmallDateTime, 4, 0, 0, "3A", "01 00 02 00", "01 00 02 00", ""},
    {"IntN", TypeCode::IntN, 4, 0, 0, "26 04", "01 02 03 04", "04 01 02 03 04", "00"},
    {"BitN", TypeCode::BitN, 1, 0, 0, "68 01", "01", "01 01", "00"},
    {"FloatN", TypeCode::FloatN, 4, 0, 0, "6D 04", "00 00 80 3F", "04 00 00 80 3F", "00"},
    {"MoneyN", TypeCode::MoneyN, 4, 0, 0, "6E 04", "10 27 00 00", "04 10 27 00 00", "00"},
    {"DateTimeN", TypeCode::DateTimeN, 4, 0, 0, "6F 04", "01 00 02 00", "04 01 00 02 00", "00"},
    {"Guid", TypeCode::Guid, 16, 0, 0, "24 10", "00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F",
     "10 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F", "00"},
    {"Decimal", TypeCode::Decimal, 5, 9, 2, "6A 05 09 02", "01 7B 00 00 00", "05 01 7B 00 00 00",
     "00"},
    {"Numeric", TypeCode::Numeric, 17, 38, 38, "6C 11 26 26", "01 7B 00 00 00", "05 01 7B 00 00 00",
     "00"},
    {"Date", TypeCode::Date, 3, 0, 0, "28", "01 02 03", "03 01 02 03", "00"},
    {"Time", TypeCode::Time, 5, 0, 7, "29 07", "01 02 03 04 05", "05 01 02 03 04 05", "00"},
    {"DateTime2", TypeCode::DateTime2, 6, 0, 0, "2A 00", "01 02 03 04 05 06",
     "06 01 02 03 04 05 06", "00"},
    {"DateTimeOffset", TypeCode::DateTimeOffset, 9, 0, 3, "2B 03", "01 02 03 04 05 06 07 08 09",
     "09 01 02 03 04 05 06 07 08 09", "00"},
    {"VarChar", TypeCode::VarChar, 10, 0, 0, "A7 0A 00 09 04 D0 00 34", "61 62", "02 00 61 62",
     "FF FF"},
    {"Char", TypeCode::Char, 2, 0, 0, "AF 02 00 09 04 D0 00 34", "61 62", "02 00 61 62", "FF FF"},
    {"NVarChar", TypeCode::NVarChar, 8000, 0, 0, "E7 40 1F 09 04 D0 00 34", "61 00", "02 00 61 00",
     "FF FF"},
    {"EmptyNVarChar", TypeCode::NVarChar, 20, 0, 0, "E7 14 00 09 04 D0 00 34", "", "00 00",
     "FF FF"},
    {"NVarCharMax", TypeCode::NVarChar, MaxSize, 0, 0, "E7 FF FF 09 04 D0 00 34", "61 00",
     "02 00 00 00 00 00 00 00 02 00 00 00 61 00 00 00 00 00", "FF FF FF FF FF FF FF FF"},
    {"EmptyMax", TypeCode::VarBinary, MaxSize, 0, 0, "A5 FF FF", "",
     "00 00 00 00 00 00 00 00 00 00 00 00", "FF FF FF FF FF FF FF FF"},
    {"VarBinary", TypeCode::VarBinary, 8, 0, 0, "A5 08 00", "00 FF", "02 00 00 FF", "FF FF"},
    {"Binary", TypeCode::Binary, 2, 0, 0, "AD 02 00", "00 FF", "02 00 00 FF", "FF FF"},
    {"Xml", TypeCode::Xml, MaxSize, 0, 0, "F1 00", "61 00",
     "02 00 00 00 00 00 00 00 02 00 00 00 61 00 00 00 00 00", "FF FF FF FF FF FF FF FF"},
    {"Text", TypeCode::Text, 0x7FFFFFFF, 0, 0, "23 FF FF FF 7F 09 04 D0 00 34", "61",
     "10 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 00 00 00 61",
     "00"},
    {"Variant", TypeCode::Variant, 8009, 0, 0, "62 49 1F 00 00", "38 00 01 00 00 00",
     "06 00 00 00 38 00 01 00 00 00", "00 00 00 00"},
};

TypeInfo InfoOf(const TypeCase& c) {
    TypeInfo info;
    info.code = c.code;
    info.size = c.size;
    info.precision = c.precision;
    info.scale = c.scale;
    return info;
}

class TypeInfoCases : public testing::TestWithParam<TypeCase> {};

}  // namespace

TEST_P(TypeInfoCases, IsDescribedByItsBytes) {
    const TypeCase& c = GetParam();
    EXPECT_EQ(ExpectTokenBytes<TypeInfo>(InfoOf(c), c.description), InfoOf(c));
}

TEST_P(TypeInfoCases, ValueHasItsFrame) {
    const TypeCase& c = GetParam();
    const TypeInfo info = InfoOf(c);
    const auto content = Hex(c.content);
    const RawValue value{false, QByteArray(reinterpret_cast<const char*>(content.data()),
                                           static_cast<qsizetype>(content.size()))};
    EXPECT_EQ(Written([&](ByteWriter& w) { value.Encode(w, info, Place::Row); }), c.framed);
    const auto framed = Hex(c.framed);
    ByteReader reader(framed);
    EXPECT_EQ(RawValue::Decode(reader, info, Place::Row), value);
    EXPECT_TRUE(reader.AtEnd());
    ExpectEveryCutIsSeen(c.framed,
                         [&](ByteReader& cut) { RawValue::Decode(cut, info, Place::Row); });
}

TEST_P(TypeInfoCases, NullHasItsFrame) {
    const TypeCase& c = GetParam();
    const TypeInfo info = InfoOf(c);
    const auto encode = [&](ByteWriter& w) { RawValue{}.Encode(w, info, Place::Row); };
    if (*c.framedNull == '\0') {
        EXPECT_EQ(FaultOf([&] { Written(encode); }), Fault::ValueLength);
        return;
    }
    EXPECT_EQ(Written(encode), c.framedNull);
    const auto framed = Hex(c.framedNull);
    ByteReader reader(framed);
    EXPECT_TRUE(RawValue::Decode(reader, info, Place::Row).null);
    EXPECT_TRUE(reader.AtEnd());
}

INSTANTIATE_TEST_SUITE_P(All, TypeInfoCases, testing::ValuesIn(Cases),
                         [](const auto& param) { return std::string(param.param.name); });

struct BadType {
    const char* bytes;
    Fault fault;
};

class BadTypes : public testing::TestWithParam<BadType> {};

TEST_P(BadTypes, AreRefused) {
    const auto bytes = Hex(GetParam().bytes);
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  TypeInfo::Decode(reader);
              }),
              GetParam().fault);
}

INSTANTIATE_TEST_SUITE_P(All, BadTypes,
                         testing::Values(BadType{"00", Fault::TypeCode},
                                         BadType{"FF", Fault::TypeCode},
                                         BadType{"26 03", Fault::TypeSize},  // int of 3 bytes
                                         BadType{"26 FF", Fault::TypeSize},
                                         BadType{"6A 05 00 00", Fault::TypeSize},  // precision 0
                                         BadType{"6A 05 27 00", Fault::TypeSize},  // precision 39
                                         BadType{"6A 05 09 0A", Fault::TypeSize},  // scale 10 of 9
                                         BadType{"6A 06 09 02", Fault::TypeSize},
                                         BadType{"29 08", Fault::TypeSize},  // time(8)
                                         BadType{"A7 41 1F 09 04 D0 00 34", Fault::TypeSize},
                                         BadType{"F1 01", Fault::TypeSize}));  // typed xml

TEST(RawValueTest, PartsOfALongValueAreJoined) {
    TypeInfo info{TypeCode::VarBinary, MaxSize, 0, 0, DefaultCollation};
    const auto bytes = Hex("FE FF FF FF FF FF FF FF 01 00 00 00 AA 02 00 00 00 BB CC 00 00 00 00");
    ByteReader reader(bytes);
    EXPECT_EQ(RawValue::Decode(reader, info, Place::Row).bytes, QByteArray::fromHex("AABBCC"));
}

TEST(RawValueTest, PartsThatDoNotAddUpAreRefused) {
    TypeInfo info{TypeCode::VarBinary, MaxSize, 0, 0, DefaultCollation};
    const auto bytes = Hex("05 00 00 00 00 00 00 00 01 00 00 00 AA 00 00 00 00");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  RawValue::Decode(reader, info, Place::Row);
              }),
              Fault::ValueLength);
}

TEST(RawValueTest, PartLongerThanTheMessageTakesNoMemory) {
    TypeInfo info{TypeCode::VarBinary, MaxSize, 0, 0, DefaultCollation};
    const auto bytes = Hex("FE FF FF FF FF FF FF FF FF FF FF FF AA");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  RawValue::Decode(reader, info, Place::Row);
              }),
              Fault::Truncated);
}

TEST(RawValueTest, LongParameterHasNoTextPointer) {
    TypeInfo info{TypeCode::NText, 100, 0, 0, DefaultCollation};
    const RawValue value{false, QByteArray::fromHex("6100")};
    EXPECT_EQ(Written([&](ByteWriter& w) { value.Encode(w, info, Place::Parameter); }),
              "02 00 00 00 61 00");
    EXPECT_EQ(Written([&](ByteWriter& w) { RawValue{}.Encode(w, info, Place::Parameter); }),
              "FF FF FF FF");
}

}  // namespace quarv::localdb::tds
