#include "localdb/engine/DecimalMath.h"

#include <gtest/gtest.h>

namespace quarv::localdb::engine {

namespace {

std::string Text(const std::optional<Int128>& value, int scale) {
    return value ? DecimalMath::ToText(*value, scale) : "overflow";
}

Int128 Number(const char* text, int scale) {
    bool invalid = false;
    return *DecimalMath::Parse(text, 38, scale, invalid);
}

}  // namespace

TEST(DecimalMath, ParsesAndRounds) {
    bool invalid = false;
    EXPECT_EQ(Text(DecimalMath::Parse("1.255", 5, 2, invalid), 2), "1.26");
    EXPECT_EQ(Text(DecimalMath::Parse("-1.254", 5, 2, invalid), 2), "-1.25");
    EXPECT_EQ(Text(DecimalMath::Parse(" +.5 ", 5, 2, invalid), 2), "0.50");
    EXPECT_EQ(Text(DecimalMath::Parse("999.995", 5, 2, invalid), 2), "overflow");
    EXPECT_FALSE(invalid);
    for (const char* text : {"", " ", "-", ".", "1.2.3", "1e5", "0x1", "1 2", "12a"}) {
        EXPECT_EQ(Text(DecimalMath::Parse(text, 38, 0, invalid), 0), "overflow") << text;
        EXPECT_TRUE(invalid) << text;
    }
    EXPECT_EQ(Text(DecimalMath::Parse(std::string(500, '9'), 38, 0, invalid), 0), "overflow");
    EXPECT_FALSE(invalid);
}

TEST(DecimalMath, ComputesAtTheEdgeOfThirtyEightDigits) {
    const char* nines = "99999999999999999999999999999999999999";
    const Int128 most = Number(nines, 0);
    EXPECT_EQ(Text(DecimalMath::Add(most, 0, 1, 0, 38, 0), 0), "overflow");
    EXPECT_EQ(Text(DecimalMath::Add(most, 0, -1, 0, 38, 0), 0),
              "99999999999999999999999999999999999998");
    EXPECT_EQ(Text(DecimalMath::Multiply(most, 38, most, 38, 38, 38), 38),
              "0.99999999999999999999999999999999999998");
    EXPECT_EQ(Text(DecimalMath::Divide(most, 0, most, 38, 38, 0), 0), "overflow");
    EXPECT_EQ(Text(DecimalMath::Divide(1, 0, 3, 0, 38, 38), 38),
              "0.33333333333333333333333333333333333333");
    EXPECT_EQ(Text(DecimalMath::Divide(most, 38, Number("0.5", 1), 1, 38, 37), 37),
              "1.9999999999999999999999999999999999999");
    EXPECT_EQ(Text(DecimalMath::Remainder(most, 0, 7, 0, 38, 0), 0), "1");
}

TEST(DecimalMath, RescalesByRoundingHalfAwayFromZero) {
    EXPECT_EQ(Text(DecimalMath::Rescale(Number("2.5", 1), 1, 38, 0), 0), "3");
    EXPECT_EQ(Text(DecimalMath::Rescale(Number("-2.5", 1), 1, 38, 0), 0), "-3");
    EXPECT_EQ(Text(DecimalMath::Rescale(Number("2.49", 2), 2, 38, 0), 0), "2");
    EXPECT_EQ(Text(DecimalMath::Rescale(Number("-2.9", 1), 1, 38, 0, true), 0), "-2");
    EXPECT_EQ(Text(DecimalMath::Rescale(5, 0, 3, 2), 2), "5.00");
    EXPECT_EQ(Text(DecimalMath::Rescale(50, 0, 3, 2), 2), "overflow");
}

TEST(DecimalMath, TakesTheDecimalThatADoubleIs) {
    EXPECT_EQ(Text(DecimalMath::FromDouble(0.5, 5, 2), 2), "0.50");
    EXPECT_EQ(Text(DecimalMath::FromDouble(-1e20, 38, 0), 0), "-100000000000000000000");
    EXPECT_EQ(Text(DecimalMath::FromDouble(1e39, 38, 0), 0), "overflow");
    EXPECT_DOUBLE_EQ(DecimalMath::ToDouble(Number("-1234.5678", 4), 4), -1234.5678);
}

TEST(DecimalMath, StoredBytesHaveTheOrderOfTheNumbers) {
    const char* ascending[] = {
        "-99999999999999999999999999999999999999", "-2", "-1", "0", "1", "10000000000000000000",
        "99999999999999999999999999999999999999"};
    std::string before;
    for (const char* text : ascending) {
        std::string bytes(DecimalMath::StoredBytes, '\0');
        DecimalMath::Store(Number(text, 0), bytes.data());
        EXPECT_LT(before, bytes) << text;
        EXPECT_EQ(Text(DecimalMath::Load(bytes), 0), text);
        before = bytes;
    }
}

TEST(DecimalMath, DoesNotLoadWhatWasNeverStored) {
    EXPECT_FALSE(DecimalMath::Load(""));
    EXPECT_FALSE(DecimalMath::Load(std::string(16, '\0')));
    EXPECT_FALSE(DecimalMath::Load(std::string(17, '\x02')));
    EXPECT_FALSE(DecimalMath::Load("\x01" + std::string(16, '\xFF')));
}

}  // namespace quarv::localdb::engine
