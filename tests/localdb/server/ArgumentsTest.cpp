#include "localdb/server/Arguments.h"

#include <gtest/gtest.h>

#include "localdb/server/TypeMapping.h"

namespace quarv::localdb::server {

using engine::SqlType;
using engine::TypeKind;
using tds::TypeCode;

namespace {

struct ArgumentCase {
    const char* name;
    TypeCode code;
    uint32_t size;
    uint8_t precision;
    uint8_t scale;
    const char* content;
    TypeKind kind;
    int32_t length;
    const char* text;
};

class ArgumentCases : public testing::TestWithParam<ArgumentCase> {};

tds::RpcParameter ParameterOf(const ArgumentCase& c) {
    tds::RpcParameter parameter;
    parameter.name = QStringLiteral("@p");
    parameter.type.code = c.code;
    parameter.type.size = c.size;
    parameter.type.precision = c.precision;
    parameter.type.scale = c.scale;
    parameter.value = {false, QByteArray::fromHex(c.content)};
    return parameter;
}

}  // namespace

TEST_P(ArgumentCases, BecomesALiteralOfItsType) {
    const ArgumentCase& c = GetParam();
    const engine::Argument argument = ArgumentOf(ParameterOf(c));
    EXPECT_EQ(argument.name, QStringLiteral("@p"));
    EXPECT_EQ(argument.type.kind, c.kind);
    EXPECT_EQ(argument.type.length, c.length);
    EXPECT_EQ(argument.text, QString::fromUtf8(c.text));
    EXPECT_FALSE(argument.null);
}

constexpr auto Max = SqlType::Max;

INSTANTIATE_TEST_SUITE_P(
    All, ArgumentCases,
    testing::Values(
        ArgumentCase{"Bit", TypeCode::BitN, 1, 0, 0, "01", TypeKind::Bit, 0, "1"},
        ArgumentCase{"TinyInt", TypeCode::IntN, 1, 0, 0, "ff", TypeKind::TinyInt, 0, "255"},
        ArgumentCase{"SmallInt", TypeCode::IntN, 2, 0, 0, "0080", TypeKind::SmallInt, 0, "-32768"},
        ArgumentCase{"Int", TypeCode::IntN, 4, 0, 0, "feffffff", TypeKind::Int, 0, "-2"},
        ArgumentCase{"FixedInt", TypeCode::Int4, 4, 0, 0, "07000000", TypeKind::Int, 0, "7"},
        ArgumentCase{"BigInt", TypeCode::IntN, 8, 0, 0, "0000000000000080", TypeKind::BigInt, 0,
                     "-9223372036854775808"},
        ArgumentCase{"Real", TypeCode::FloatN, 4, 0, 0, "cdcccc3d", TypeKind::Real, 0,
                     "1.00000001e-01"},
        ArgumentCase{"Float", TypeCode::FloatN, 8, 0, 0, "9a9999999999b93f", TypeKind::Float, 0,
                     "1e-01"},
        ArgumentCase{"Money", TypeCode::MoneyN, 8, 0, 0, "ffffffffc7cfffff", TypeKind::Money, 0,
                     "-1.2345"},
        ArgumentCase{"SmallMoney", TypeCode::MoneyN, 4, 0, 0, "39300000", TypeKind::SmallMoney, 0,
                     "1.2345"},
        ArgumentCase{"Decimal", TypeCode::Decimal, 5, 9, 2, "0039300000", TypeKind::Decimal, 0,
                     "-123.45"},
        ArgumentCase{"VarChar", TypeCode::VarChar, 10, 0, 0, "80e4", TypeKind::VarChar, 10,
                     "\xE2\x82\xAC\xC3\xA4"},
        ArgumentCase{"NVarChar", TypeCode::NVarChar, 20, 0, 0, "3dd800de", TypeKind::NVarChar, 10,
                     "\xF0\x9F\x98\x80"},
        ArgumentCase{"EmptyNVarChar", TypeCode::NVarChar, 0, 0, 0, "", TypeKind::NVarChar, 1, ""},
        ArgumentCase{"NVarCharMax", TypeCode::NVarChar, tds::MaxSize, 0, 0, "6100",
                     TypeKind::NVarChar, Max, "a"},
        ArgumentCase{"NText", TypeCode::NText, 100, 0, 0, "6100", TypeKind::NVarChar, Max, "a"},
        ArgumentCase{"Text", TypeCode::Text, 100, 0, 0, "61", TypeKind::VarChar, Max, "a"},
        ArgumentCase{"Image", TypeCode::Image, 100, 0, 0, "61", TypeKind::VarBinary, Max, "0x61"},
        ArgumentCase{"VarBinary", TypeCode::VarBinary, 8, 0, 0, "00ff", TypeKind::VarBinary, 8,
                     "0x00FF"},
        ArgumentCase{"EmptyBinary", TypeCode::VarBinary, 8, 0, 0, "", TypeKind::VarBinary, 8, "0x"},
        ArgumentCase{"Date", TypeCode::Date, 3, 0, 0, "dab937", TypeKind::Date, 0, "9999-12-31"},
        ArgumentCase{"Time", TypeCode::Time, 5, 0, 7, "4e61bc0000", TypeKind::Time, 0,
                     "00:00:01.2345678"},
        ArgumentCase{"TimeWithoutFraction", TypeCode::Time, 3, 0, 0, "7f5101", TypeKind::Time, 0,
                     "23:59:59"},
        ArgumentCase{"SmallDateTime", TypeCode::DateTimeN, 4, 0, 0, "03003d00",
                     TypeKind::SmallDateTime, 0, "1900-01-04 01:01:00"},
        ArgumentCase{"DateTime", TypeCode::DateTimeN, 8, 0, 0, "010000002c010000",
                     TypeKind::DateTime, 0, "1900-01-02 00:00:01.000"},
        ArgumentCase{"DateTimeBefore1900", TypeCode::DateTimeN, 8, 0, 0, "ffffffffff818b01",
                     TypeKind::DateTime, 0, "1899-12-31 23:59:59.997"},
        ArgumentCase{"DateTime2", TypeCode::DateTime2, 6, 0, 0, "010000020000", TypeKind::DateTime2,
                     0, "0001-01-03 00:00:01"},
        ArgumentCase{"DateTimeOffset", TypeCode::DateTimeOffset, 8, 0, 0, "010000020000a6ff",
                     TypeKind::DateTimeOffset, 0, "0001-01-02 22:30:01 -01:30"},
        ArgumentCase{"Guid", TypeCode::Guid, 16, 0, 0, "00112233445566778899aabbccddeeff",
                     TypeKind::UniqueIdentifier, 0, "33221100-5544-7766-8899-AABBCCDDEEFF"}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(ArgumentsTest, NullHasNoText) {
    tds::RpcParameter parameter;
    parameter.type.size = 4;
    parameter.status = tds::RpcParameter::Output | tds::RpcParameter::Default;
    const engine::Argument argument = ArgumentOf(parameter);
    EXPECT_TRUE(argument.null);
    EXPECT_TRUE(argument.output);
    EXPECT_TRUE(argument.isDefault);
    EXPECT_TRUE(argument.text.isEmpty());
}

struct BadArgument {
    TypeCode code;
    uint32_t size;
    const char* content;
};

class BadArguments : public testing::TestWithParam<BadArgument> {};

TEST_P(BadArguments, AreRefused) {
    tds::RpcParameter parameter;
    parameter.type.code = GetParam().code;
    parameter.type.size = GetParam().size;
    parameter.value = {false, QByteArray::fromHex(GetParam().content)};
    EXPECT_THROW(ArgumentOf(parameter), tds::ProtocolError);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadArguments,
    testing::Values(BadArgument{TypeCode::FloatN, 8, "000000000000f07f"},  // infinity
                    BadArgument{TypeCode::FloatN, 8, "000000000000f87f"},  // not a number
                    BadArgument{TypeCode::NVarChar, 20, "610062"},         // odd
                    BadArgument{TypeCode::Date, 3, "dbb937"},              // the year 10000
                    BadArgument{TypeCode::DateTimeN, 8, "ffffff7f00000000"},
                    BadArgument{TypeCode::DateTimeOffset, 8, "0100000000000180"}));

struct TypeCase {
    SqlType type;
    TypeCode code;
    uint32_t size;
};

class TypeCases : public testing::TestWithParam<TypeCase> {};

TEST_P(TypeCases, HaveTheirWireType) {
    const tds::TypeInfo wire = WireTypeOf(GetParam().type);
    EXPECT_EQ(wire.code, GetParam().code);
    EXPECT_EQ(wire.size, GetParam().size);
}

INSTANTIATE_TEST_SUITE_P(
    All, TypeCases,
    testing::Values(TypeCase{{TypeKind::Bit, 0, 0, 0}, TypeCode::BitN, 1},
                    TypeCase{{TypeKind::BigInt, 0, 0, 0}, TypeCode::IntN, 8},
                    TypeCase{{TypeKind::Decimal, 0, 10, 2}, TypeCode::Decimal, 9},
                    TypeCase{{TypeKind::Numeric, 0, 38, 0}, TypeCode::Numeric, 17},
                    TypeCase{{TypeKind::NVarChar, 50, 0, 0}, TypeCode::NVarChar, 100},
                    TypeCase{{TypeKind::NVarChar, Max, 0, 0}, TypeCode::NVarChar, tds::MaxSize},
                    TypeCase{{TypeKind::VarChar, 50, 0, 0}, TypeCode::VarChar, 50},
                    TypeCase{{TypeKind::VarBinary, Max, 0, 0}, TypeCode::VarBinary, tds::MaxSize},
                    TypeCase{{TypeKind::SmallDateTime, 0, 0, 0}, TypeCode::DateTimeN, 4},
                    TypeCase{{TypeKind::RowVersion, 0, 0, 0}, TypeCode::Binary, 8},
                    TypeCase{{TypeKind::Xml, 0, 0, 0}, TypeCode::Xml, tds::MaxSize}));

TEST(TypeMappingTest, FlagsTellNullableIdentityAndComputed) {
    engine::Column column;
    EXPECT_EQ(WireColumnOf(column).flags, 0x0009);
    column.nullable = false;
    column.identity = true;
    EXPECT_EQ(WireColumnOf(column).flags, 0x0010);
    column.identity = false;
    column.computed = true;
    EXPECT_EQ(WireColumnOf(column).flags, 0x0020);
}

}  // namespace quarv::localdb::server
