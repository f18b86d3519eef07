#include <gtest/gtest.h>

#include "platform/ado/WrittenRow.h"
#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

using C = FakeColumn;

// One column, one type: its value on the wire and what the field gives, as its kind's own text.
struct TypeCase {
    const char* name;
    FakeColumn column;
    FakeValue sent;
    Value::Kind kind;
    QString text;
};

QByteArray Hex(const char* digits) {
    return QByteArray::fromHex(digits);
}

QString Exact(const Value& value) {
    switch (value.kind()) {
        case Value::Kind::Null:
            return QStringLiteral("null");
        case Value::Kind::Decimal:
            return value.AsDecimal().ToText();
        case Value::Kind::DateTime:
            return value.AsDateTime().ToIsoText();
        case Value::Kind::Bytes:
            return QString::fromLatin1(value.Bytes().toHex());
        default:
            return value.ToText(QLocale::c());
    }
}

const QString N = QStringLiteral("v");

const TypeCase Types[] = {
    {"BitTrue", C::Bit(N), Hex("01"), Value::Kind::Boolean, "True"},
    {"BitFalse", C::Bit(N), Hex("00"), Value::Kind::Boolean, "False"},
    {"TinyIntIsUnsigned", C::Int(N, 1), Hex("ff"), Value::Kind::Integer, "255"},
    {"SmallInt", C::Int(N, 2), Hex("0080"), Value::Kind::Integer, "-32768"},
    {"Int", C::Int(N, 4), Hex("ffffff7f"), Value::Kind::Integer, "2147483647"},
    {"BigIntLeast", C::Int(N, 8), Hex("0000000000000080"), Value::Kind::Integer,
     "-9223372036854775808"},
    {"IntNull", C::Int(N, 4), {}, Value::Kind::Null, "null"},
    {"RealGainsNoDigits", C::Float(N, 4), Hex("cdcccc3d"), Value::Kind::Single, "0.1"},
    {"Float", C::Float(N, 8), Hex("9a9999999999b93f"), Value::Kind::Floating, "0.1"},
    {"FloatGreatest", C::Float(N, 8), Hex("ffffffffffffef7f"), Value::Kind::Floating,
     "1.7976931348623157E+308"},
    {"DecimalKeepsItsScale", C::Decimal(N, 18, 4), Hex("01982c0000000000000000000000000000"),
     Value::Kind::Decimal, "1.1416"},
    {"DecimalTrailingZeros", C::Decimal(N, 10, 2), Hex("0196000000"), Value::Kind::Decimal, "1.50"},
    {"DecimalBelowOne", C::Decimal(N, 10, 2), Hex("0005000000"), Value::Kind::Decimal, "-0.05"},
    {"DecimalOf38Digits", C::Decimal(N, 38, 0), Hex("01ffffffff3f228a097ac4865aa84c3b4b"),
     Value::Kind::Decimal, "99999999999999999999999999999999999999"},
    {"MoneyKeepsFourDigits", C::Money(N), Hex("0000000001000000"), Value::Kind::Decimal, "0.0001"},
    {"MoneyNegative", C::Money(N), Hex("ffffffffc7cfffff"), Value::Kind::Decimal, "-1.2345"},
    {"NVarChar", C::NVarChar(N, 50), Utf16(QStringLiteral("Größe")), Value::Kind::Text, "Größe"},
    {"NVarCharEmpty", C::NVarChar(N, 50), QByteArray(""), Value::Kind::Text, ""},
    {"NVarCharNull", C::NVarChar(N, 50), {}, Value::Kind::Null, "null"},
    {"EmojiIsWhole", C::NVarChar(N, 2), Utf16(QStringLiteral("😀")), Value::Kind::Text, "😀"},
    {"VarCharInCodePage", C::VarChar(N, 10), Hex("e980"), Value::Kind::Text, "é€"},
    {"VarBinary", C::VarBinary(N, 10), Hex("00ff10"), Value::Kind::Bytes, "00ff10"},
    {"VarBinaryEmpty", C::VarBinary(N, 10), QByteArray(""), Value::Kind::Bytes, ""},
    {"Guid", C::Guid(N), Hex("33221100554477668899aabbccddeeff"), Value::Kind::Text,
     "00112233-4455-6677-8899-AABBCCDDEEFF"},
    {"DateTime", C::DateTimeOld(N, 8), Hex("00a90000f3c10e01"), Value::Kind::DateTime,
     "2018-06-15 16:25:47.903"},
    {"SmallDateTime", C::DateTimeOld(N, 4), Hex("00a9d903"), Value::Kind::DateTime,
     "2018-06-15 16:25:00"},
    {"DateFirst", C::Date(N), Hex("000000"), Value::Kind::DateTime, "0001-01-01"},
    {"DateLast", C::Date(N), Hex("dab937"), Value::Kind::DateTime, "9999-12-31"},
    {"TimeKeepsSevenDigits", C::Time(N, 7), Hex("071f815b78"), Value::Kind::DateTime,
     "14:21:33.1264263"},
    {"TimeWithoutFraction", C::Time(N, 0), Hex("7e5101"), Value::Kind::DateTime, "23:59:58"},
    {"DateTime2", C::DateTime2(N, 7), Hex("ffbf692ac9dab937"), Value::Kind::DateTime,
     "9999-12-31 23:59:59.9999999"},
    {"DateTime2OfThreeDigits", C::DateTime2(N, 3), Hex("7b000000000000"), Value::Kind::DateTime,
     "0001-01-01 00:00:00.123"},
    {"OffsetIsKept", C::DateTimeOffset(N, 7), Hex("0150cfdf96cb400b4a01"), Value::Kind::DateTime,
     "2020-02-29 23:30:00.0000001 +05:30"},
    {"OffsetWest", C::DateTimeOffset(N, 0), Hex("04740090400b20fe"), Value::Kind::DateTime,
     "2020-01-01 00:15:00 -08:00"},
    {"XmlLosesItsMark", C::Xml(N), Hex("fffe") + Utf16(QStringLiteral("<a/>")), Value::Kind::Text,
     "<a/>"},
    {"VariantInt", C::Variant(N), Hex("38002a000000"), Value::Kind::Text, "42"},
    {"VariantDecimal", C::Variant(N), Hex("6a02120401982c000000000000"), Value::Kind::Text,
     "1.1416"},
    {"VariantFloat", C::Variant(N), Hex("3e00000000000000e03f"), Value::Kind::Text, "0.5"},
    {"VariantDateTime2", C::Variant(N), Hex("2a0107ffbf692ac9dab937"), Value::Kind::Text,
     "9999-12-31 23:59:59.9999999"},
    {"VariantTime", C::Variant(N),
     Hex("290107"
         "071f815b78"),
     Value::Kind::Text, "14:21:33.1264263"},
    {"VariantGuid", C::Variant(N), Hex("240033221100554477668899aabbccddeeff"), Value::Kind::Text,
     "00112233-4455-6677-8899-AABBCCDDEEFF"},
    {"VariantBytes", C::Variant(N), Hex("a5020a0000ff10"), Value::Kind::Text, "00ff10"},
    {"VariantNull", C::Variant(N), {}, Value::Kind::Null, "null"},
    {"UserDefined", C::UserDefined(N), Hex("e6100000010c"), Value::Kind::Bytes, "e6100000010c"},
    {"Text", C::Text(N), Hex("e980"), Value::Kind::Text, "é€"},
    {"NText", C::NText(N), Utf16(QStringLiteral("é😀")), Value::Kind::Text, "é😀"},
    {"NTextNull", C::NText(N), {}, Value::Kind::Null, "null"},
    {"Image", C::Image(N), Hex("00ff10"), Value::Kind::Bytes, "00ff10"},
    {"VariantText", C::Variant(N), Hex("e7070904d000344000") + Utf16(QStringLiteral("é😀")),
     Value::Kind::Text, "é😀"},
};

class TypeTest : public testing::TestWithParam<TypeCase> {};

// Beside a short column of odd length, which must not matter.
FakeTds ThreeRows(const TypeCase& c) {
    FakeTds answer;
    answer.Columns({C::VarBinary("odd", 3), c.column});
    for (int i = 0; i < 3; ++i) answer.Row({Hex("0102ff"), c.sent});
    return answer.Done(3);
}

void ExpectValue(const TypeCase& c, const Value& value) {
    EXPECT_EQ(value.kind(), c.kind);
    EXPECT_EQ(Exact(value), c.text);
}

}  // namespace

TEST_P(TypeTest, ArrivesAsItIs) {
    const FakeServer server(ThreeRows(GetParam()));
    const auto connection = Open(server);
    const auto rows = connection->Execute(QStringLiteral("select v"));
    // The first row is asked for value by value, later ones come into a buffer: all must agree.
    for (int row = 0; row < 3; ++row) {
        ASSERT_FALSE(rows->EOF());
        for (int again = 0; again < 2; ++again) ExpectValue(GetParam(), (*rows)["v"]);
        rows->MoveNext();
    }
    EXPECT_TRUE(rows->EOF());
}

TEST_P(TypeTest, IsWrittenAsItIs) {
    const FakeServer server(ThreeRows(GetParam()));
    const auto connection = Open(server);
    const auto rows = connection->Execute(QStringLiteral("select v"));
    for (int row = 0; row < 3; ++row) {
        for (int again = 0; again < 2; ++again) ExpectValue(GetParam(), WrittenRow(*rows).at(1));
        rows->MoveNext();
    }
    EXPECT_TRUE(rows->EOF());
}

TEST_P(TypeTest, IsWrittenAsItIsWhereItWasReadAhead) {
    const FakeServer server(ThreeRows(GetParam()));
    const auto connection = Open(server);
    const auto rows = connection->Execute(QStringLiteral("select v"));
    connection->Execute(QStringLiteral("select other"));
    for (int row = 0; row < 3; ++row) {
        ExpectValue(GetParam(), (*rows)["v"]);
        ExpectValue(GetParam(), WrittenRow(*rows).at(1));
        EXPECT_EQ(Exact(WrittenRow(*rows).at(0)), QStringLiteral("0102ff"));
        rows->MoveNext();
    }
    EXPECT_TRUE(rows->EOF());
}

INSTANTIATE_TEST_SUITE_P(Types, TypeTest, testing::ValuesIn(Types),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace quarv::test
