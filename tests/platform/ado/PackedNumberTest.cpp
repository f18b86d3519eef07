#include "platform/ado/PackedNumber.h"

#include <gtest/gtest.h>

#include <limits>

namespace quarv::test {

using ado::PackedNumber;

TEST(PackedNumber, UsualIntegersTakeFewBytes) {
    const std::pair<qint64, quint64> sizes[] = {{0, 0},
                                                {1, 1},
                                                {-1, 1},
                                                {127, 1},
                                                {-128, 1},
                                                {128, 2},
                                                {32767, 2},
                                                {-32768, 2},
                                                {32768, 3},
                                                {std::numeric_limits<qint64>::max(), 8},
                                                {std::numeric_limits<qint64>::min(), 8}};
    for (const auto& [number, size] : sizes) {
        const PackedNumber packed(number);
        EXPECT_EQ(packed.Size(), size) << number;
        EXPECT_EQ(packed.Integer(), number);
    }
}

TEST(PackedNumber, RoundFloatingNumbersTakeFewBytes) {
    const std::pair<double, quint64> sizes[] = {{0.0, 0},  {2.0, 1},    {0.5, 2},
                                                {-1.5, 2}, {100.25, 3}, {0.1, 8}};
    for (const auto& [number, size] : sizes) {
        const PackedNumber packed(number);
        EXPECT_EQ(packed.Size(), size) << number;
        EXPECT_EQ(packed.Floating(), number);
    }
    EXPECT_EQ(PackedNumber(0.5F).Size(), 1U);
    EXPECT_EQ(PackedNumber(0.1F).Size(), 4U);
}

TEST(PackedNumber, FloatingNumbersOfFewDigitsTakeThose) {
    const std::pair<double, quint64> sizes[] = {{0.1, 2},         {-0.1, 2},      {12.34, 3},
                                                {-99.99, 3},      {1234.5678, 4}, {0.0001, 2},
                                                {10000000.01, 5}, {16777217.3, 5}};
    for (const auto& [number, size] : sizes) {
        const auto packed = PackedNumber::OfDigits(number);
        ASSERT_TRUE(packed) << number;
        EXPECT_EQ(packed->Size(), size) << number;
        EXPECT_EQ(packed->FloatingOfDigits(), number);
    }
}

TEST(PackedNumber, OtherFloatingNumbersKeepTheirBits) {
    for (const double number :
         {0.0, -0.0, 0.5, 0.1 + 0.2, 1.0 / 3, 0.00001, 123456789012.1, -1e308, 5e-324, 1e22,
          std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN(), 99999999999.99991})
        EXPECT_FALSE(PackedNumber::OfDigits(number)) << number;
}

TEST(PackedNumber, DecimalsTakeTheirScaleAndTheirDigits) {
    const std::pair<const char16_t*, quint64> sizes[] = {
        {u"0", 0},
        {u"0.00", 1},
        {u"1.50", 2},
        {u"-1.50", 2},
        {u"1234.56", 4},
        {u"18446744073709551615", 9},
        {u"18446744073709551616", 10},
        {u"-99999999999999999999999999999999999999", 17}};
    for (const auto& [text, size] : sizes) {
        const PackedNumber packed(*Decimal::Parse(text));
        EXPECT_EQ(packed.Size(), size);
        EXPECT_EQ(packed.Decimal().ToText(), QString::fromUtf16(text));
    }
}

TEST(PackedNumber, DatesTakeWhatTheyShow) {
    const std::pair<const char16_t*, quint64> sizes[] = {
        {u"2024-03-05", 5},
        {u"2024-03-05 10:20:30", 8},
        {u"2024-03-05 10:20:30.123", 12},
        {u"2024-03-05 10:20:30.1234567 +05:30", 15}};
    for (const auto& [text, size] : sizes) {
        const PackedNumber packed(*DateTime::ParseIso(text));
        EXPECT_EQ(packed.Size(), size) << QString::fromUtf16(text).toStdString();
        EXPECT_EQ(packed.DateTime().ToIsoText(), QString::fromUtf16(text));
    }
}

}  // namespace quarv::test
