#include <limits>

#include "TokenChecks.h"
#include "localdb/tds/NumericValues.h"

namespace quarv::localdb::tds {

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
}

}  // namespace quarv::localdb::tds
