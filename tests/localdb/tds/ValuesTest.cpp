#include <cmath>
#include <limits>

#include "TokenChecks.h"
#include "localdb/tds/CodePage1252.h"
#include "localdb/tds/NumericValues.h"
#include "localdb/tds/StringValues.h"
#include "localdb/tds/TemporalValues.h"

namespace quarv::localdb::tds {

namespace {

// The content behind the u8 count.
template <typename Read>
auto ReadBack(const char* counted, Read read) {
    const auto bytes = Hex(counted);
    return read(std::span(bytes).subspan(1));
}

}  // namespace

struct IntegerCase {
    uint32_t size;
    int64_t value;
    const char* bytes;
};

class IntegerCases : public testing::TestWithParam<IntegerCase> {};

TEST_P(IntegerCases, HasItsBytes) {
    const auto& [size, value, bytes] = GetParam();
    EXPECT_EQ(Written([&, s = size, v = value](ByteWriter& w) { WriteInteger(w, s, v); }), bytes);
    EXPECT_EQ(ReadBack(bytes, ReadInteger), value);
}

INSTANTIATE_TEST_SUITE_P(All, IntegerCases,
                         testing::Values(IntegerCase{1, 0, "01 00"}, IntegerCase{1, 255, "01 FF"},
                                         IntegerCase{2, -32768, "02 00 80"},
                                         IntegerCase{2, 32767, "02 FF 7F"},
                                         IntegerCase{4, -2147483648LL, "04 00 00 00 80"},
                                         IntegerCase{4, 2147483647, "04 FF FF FF 7F"},
                                         IntegerCase{8, std::numeric_limits<int64_t>::min(),
                                                     "08 00 00 00 00 00 00 00 80"},
                                         IntegerCase{8, -2, "08 FE FF FF FF FF FF FF FF"}));

TEST(NumericValuesTest, FloatKeepsItsBits) {
    EXPECT_EQ(Written([](ByteWriter& w) { WriteFloat(w, 8, -0.1); }), "08 9A 99 99 99 99 99 B9 BF");
    EXPECT_EQ(ReadBack("08 9A 99 99 99 99 99 B9 BF", ReadFloat), -0.1);
    EXPECT_EQ(Written([](ByteWriter& w) { WriteFloat(w, 4, 1.5); }), "04 00 00 C0 3F");
    EXPECT_EQ(ReadBack("04 00 00 C0 3F", ReadFloat), 1.5);
}

TEST(NumericValuesTest, MoneyHasItsHighHalfFirst) {
    EXPECT_EQ(Written([](ByteWriter& w) { WriteMoney(w, 8, 0x0000000100000002); }),
              "08 01 00 00 00 02 00 00 00");
    EXPECT_EQ(Written([](ByteWriter& w) { WriteMoney(w, 8, -1); }), "08 FF FF FF FF FF FF FF FF");
    EXPECT_EQ(ReadBack("08 01 00 00 00 02 00 00 00", ReadMoney), 0x0000000100000002);
    EXPECT_EQ(Written([](ByteWriter& w) { WriteMoney(w, 4, -10000); }), "04 F0 D8 FF FF");
    EXPECT_EQ(ReadBack("04 F0 D8 FF FF", ReadMoney), -10000);
}

TEST(NumericValuesTest, DecimalHasSignAndMagnitude) {
    EXPECT_EQ(Written([](ByteWriter& w) { WriteDecimal(w, 5, 12345, true); }), "05 00 39 30 00 00");
    const Decimal read =
        ReadBack("05 00 39 30 00 00", [](auto content) { return ReadDecimal(content, 2); });
    EXPECT_TRUE(read.magnitude == 12345);
    EXPECT_TRUE(read.negative);
    EXPECT_EQ(read.scale, 2);
}

TEST(NumericValuesTest, LargestDecimalNeedsSixteenBytes) {
    constexpr auto Bytes = "11 01 FF FF FF FF 3F 22 8A 09 7A C4 86 5A A8 4C 3B 4B";
    UInt128 magnitude = 0;
    for (int i = 0; i < 38; ++i) magnitude = magnitude * 10 + 9;
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteDecimal(w, 17, magnitude, false); }), Bytes);
    const Decimal read = ReadBack(Bytes, [](auto content) { return ReadDecimal(content, 0); });
    EXPECT_TRUE(read.magnitude == magnitude);
}

TEST(NumericValuesTest, DecimalOfThirtyNineDigitsIsRefused) {
    EXPECT_EQ(FaultOf([] {
                  ReadBack("11 01 00 00 00 00 40 22 8A 09 7A C4 86 5A A8 4C 3B 4B",
                           [](auto content) { return ReadDecimal(content, 0); });
              }),
              Fault::ValueTooLong);
}

TEST(NumericValuesTest, NegativeZeroLosesItsSign) {
    const Decimal read =
        ReadBack("05 00 00 00 00 00", [](auto content) { return ReadDecimal(content, 2); });
    EXPECT_FALSE(read.negative);
}

TEST(NumericValuesTest, ContentOfNoTypesSizeIsRefused) {
    EXPECT_EQ(FaultOf([] { ReadBack("03 01 02 03", ReadInteger); }), Fault::ValueLength);
    EXPECT_EQ(FaultOf([] { ReadBack("03 01 02 03", ReadFloat); }), Fault::ValueLength);
    EXPECT_EQ(FaultOf([] { ReadBack("03 01 02 03", ReadMoney); }), Fault::ValueLength);
    EXPECT_EQ(FaultOf([] { ReadBack("03 01 02 03", ReadDateTime); }), Fault::ValueLength);
    EXPECT_EQ(FaultOf([] { ReadBack("02 01 02", ReadDate); }), Fault::ValueLength);
}

TEST(TemporalValuesTest, DateTimeCountsDaysAndThreeHundredths) {
    // 1900-01-02 00:00:01.000
    EXPECT_EQ(Written([](ByteWriter& w) { WriteDateTime(w, 25'920'300); }),
              "08 01 00 00 00 2C 01 00 00");
    EXPECT_EQ(ReadBack("08 01 00 00 00 2C 01 00 00", ReadDateTime), 25'920'300);
}

TEST(TemporalValuesTest, DateTimeBefore1900HasNegativeDaysAndPositiveTime) {
    // 1899-12-31 23:59:59.997
    EXPECT_EQ(Written([](ByteWriter& w) { WriteDateTime(w, -1); }), "08 FF FF FF FF FF 81 8B 01");
    EXPECT_EQ(ReadBack("08 FF FF FF FF FF 81 8B 01", ReadDateTime), -1);
}

TEST(TemporalValuesTest, TimeOfDayBeyondTheDayIsRefused) {
    EXPECT_EQ(FaultOf([] { ReadBack("08 00 00 00 00 00 82 8B 01", ReadDateTime); }),
              Fault::ValueTooLong);
    EXPECT_EQ(FaultOf([] { ReadBack("04 00 00 A0 05", ReadSmallDateTime); }), Fault::ValueTooLong);
    EXPECT_EQ(
        FaultOf([] { ReadBack("03 80 51 01", [](auto content) { return ReadTime(content, 0); }); }),
        Fault::ValueTooLong);
}

TEST(TemporalValuesTest, SmallDateTimeCountsDaysAndMinutes) {
    EXPECT_EQ(Written([](ByteWriter& w) { WriteSmallDateTime(w, 1440 * 3 + 61); }),
              "04 03 00 3D 00");
    EXPECT_EQ(ReadBack("04 03 00 3D 00", ReadSmallDateTime), 1440 * 3 + 61);
}

TEST(TemporalValuesTest, DateCountsFromTheFirstYear) {
    // 9999-12-31
    EXPECT_EQ(Written([](ByteWriter& w) { WriteDate(w, 3'652'058); }), "03 DA B9 37");
    EXPECT_EQ(ReadBack("03 DA B9 37", ReadDate), 3'652'058);
}

TEST(TemporalValuesTest, TimeCountsInTheUnitOfItsScale) {
    // 00:00:01.2345678 at scales 7, 3 and 0
    EXPECT_EQ(Written([](ByteWriter& w) { WriteTime(w, 7, 12'345'678); }), "05 4E 61 BC 00 00");
    EXPECT_EQ(Written([](ByteWriter& w) { WriteTime(w, 3, 12'345'678); }), "04 D2 04 00 00");
    EXPECT_EQ(Written([](ByteWriter& w) { WriteTime(w, 0, 12'345'678); }), "03 01 00 00");
    EXPECT_EQ(ReadBack("05 4E 61 BC 00 00", [](auto c) { return ReadTime(c, 7); }), 12'345'678);
    EXPECT_EQ(ReadBack("04 D2 04 00 00", [](auto c) { return ReadTime(c, 3); }), 12'340'000);
}

TEST(TemporalValuesTest, DateTime2HasTimeThenDate) {
    const int64_t ticks = 2 * TicksOfDay + 10'000'000;
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteDateTime2(w, 0, ticks); }), "06 01 00 00 02 00 00");
    EXPECT_EQ(ReadBack("06 01 00 00 02 00 00", [](auto c) { return ReadDateTime2(c, 0); }), ticks);
}

TEST(TemporalValuesTest, DateTimeOffsetEndsWithItsMinutes) {
    const OffsetTime value{2 * TicksOfDay + 10'000'000, -90};
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteDateTimeOffset(w, 0, value); }),
              "08 01 00 00 02 00 00 A6 FF");
    EXPECT_EQ(
        ReadBack("08 01 00 00 02 00 00 A6 FF", [](auto c) { return ReadDateTimeOffset(c, 0); }),
        value);
}

TEST(StringValuesTest, WideTextIsUtf16InEachForm) {
    // An a with diaeresis and an emoji: two bytes and a surrogate pair.
    constexpr std::string_view Text = "\xC3\xA4\xF0\x9F\x98\x80";
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteWide(w, StringForm::Short, Text); }),
              "06 00 E4 00 3D D8 00 DE");
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteWide(w, StringForm::Plp, Text); }),
              "06 00 00 00 00 00 00 00 06 00 00 00 E4 00 3D D8 00 DE 00 00 00 00");
    EXPECT_EQ(
        Written([&](ByteWriter& w) { WriteWide(w, StringForm::Long, "a"); }),
        "10 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 02 00 00 00 61 "
        "00");
}

TEST(StringValuesTest, NarrowTextIsInTheCodePage) {
    // Euro sign, a with diaeresis, and what the code page lacks: one mark, and two for an emoji.
    EXPECT_EQ(Written([](ByteWriter& w) {
                  WriteNarrow(w, StringForm::Short, "\xE2\x82\xAC\xC3\xA4\xD0\x96\xF0\x9F\x98\x80");
              }),
              "05 00 80 E4 3F 3F 3F");
}

TEST(StringValuesTest, BinaryIsAsItStands) {
    const auto bytes = Hex("00 FF 10");
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteBinary(w, StringForm::Short, bytes); }),
              "03 00 00 FF 10");
}

TEST(StringValuesTest, ShortFormTooLongToCountIsRefused) {
    const std::string text(32768, 'a');
    EXPECT_EQ(
        FaultOf([&] { Written([&](ByteWriter& w) { WriteWide(w, StringForm::Short, text); }); }),
        Fault::ValueTooLong);
}

TEST(Utf8Test, LongAsciiTakesTheSameBytesAsShort) {
    EXPECT_EQ(Written([](ByteWriter& w) { WriteUtf8AsUtf16(w, "abcdefghi"); }),
              "61 00 62 00 63 00 64 00 65 00 66 00 67 00 68 00 69 00");
}

struct DamagedText {
    const char* utf8;
    const char* utf16;
};

class DamagedTexts : public testing::TestWithParam<DamagedText> {};

TEST_P(DamagedTexts, GiveReplacementsAndKeepTheirLength) {
    const std::string_view text = GetParam().utf8;
    const std::string written = Written([&](ByteWriter& w) { WriteUtf8AsUtf16(w, text); });
    EXPECT_EQ(written, GetParam().utf16);
    EXPECT_EQ(Hex(written).size(), 2 * Utf16Length(text));
}

INSTANTIATE_TEST_SUITE_P(All, DamagedTexts,
                         testing::Values(DamagedText{"\x80", ""},       // stray
                                         DamagedText{"\xC3", "FD FF"},  // cut short
                                         DamagedText{"\xC3x", "FD FF 78 00"},
                                         DamagedText{"\xC0\x80", "FD FF"},      // overlong
                                         DamagedText{"\xED\xA0\x80", "FD FF"},  // surrogate
                                         DamagedText{"\xF0\x9F\x98", "FD FF FD FF"},
                                         DamagedText{"\xF8\x88\x80\x80\x80", "FD FF FD FF"},
                                         DamagedText{"\xF4\x90\x80\x80", "FD FF FD FF"}));

TEST(CodePage1252Test, EveryByteComesBack) {
    for (int code = 0; code < 256; ++code) {
        const std::byte b = static_cast<std::byte>(code);
        const QString text = TextOfCp1252({&b, 1});
        ASSERT_EQ(text.size(), 1);
        EXPECT_EQ(Cp1252Of(text.at(0).unicode()), code);
    }
    const std::byte euro{0x80};
    EXPECT_EQ(TextOfCp1252({&euro, 1}), QString(QChar(0x20AC)));
}

}  // namespace quarv::localdb::tds
