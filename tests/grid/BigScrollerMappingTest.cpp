#include "grid/BigScrollerMapping.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/RuntimeError.h"
#include "support/Raised.h"

namespace quarv {
namespace {

constexpr qint32 Lowest = std::numeric_limits<qint32>::min();
constexpr qint32 Highest = std::numeric_limits<qint32>::max();
constexpr BigScrollerMapping::Ends ScaleEnds{0, 30000};
constexpr BigScrollerMapping::Steps OneAndTen{1, 10};

BigScrollerMapping Over(qint32 lMin, qint32 lMax) {
    BigScrollerMapping mapping;
    mapping.SetRange(lMin, lMax);
    mapping.ToLowEnd(mapping.InnerMinimum());
    return mapping;
}

struct Mode {
    qint32 min;
    qint32 max;
    bool direct;
};

class Modes : public testing::TestWithParam<Mode> {};

INSTANTIATE_TEST_SUITE_P(BothSidesOfTheLimits, Modes,
                         testing::Values(Mode{0, 100, true}, Mode{-32699, 32699, true},
                                         Mode{-32700, 0, false}, Mode{-32699, 0, true},
                                         Mode{0, 32700, false}, Mode{0, 32699, true},
                                         Mode{-32700, 32700, false}, Mode{5, 5, true}));

TEST_P(Modes, ARangeInsideTheLimitsIsUsedDirectly) {
    EXPECT_EQ(Over(GetParam().min, GetParam().max).Direct(), GetParam().direct);
}

TEST(BigScrollerMapping, ADirectRangeIsTheBarsOwn) {
    const BigScrollerMapping mapping = Over(-7, 100);
    EXPECT_EQ(mapping.InnerMinimum(), -7);
    EXPECT_EQ(mapping.InnerMaximum(), 100);
    EXPECT_EQ(mapping.Value(), -7);
    EXPECT_EQ(mapping.LastPosition(), -7);
}

TEST(BigScrollerMapping, AScaledRangeStartsAtZeroWhateverItsLowEnd) {
    const BigScrollerMapping mapping = Over(100000, 200000);
    EXPECT_EQ(mapping.InnerMinimum(), 0);
    EXPECT_EQ(mapping.InnerMaximum(), 30000);
    EXPECT_EQ(mapping.Minimum(), 100000);
    EXPECT_EQ(mapping.Maximum(), 200000);
    EXPECT_EQ(mapping.Value(), 0);
    EXPECT_EQ(mapping.LastPosition(), 0);
}

TEST(BigScrollerMapping, TheEndOfADirectRangeMustFitSixteenBits) {
    BigScrollerMapping mapping;
    mapping.SetRange(0, -32769);
    EXPECT_EQ(Raised([&] { (void)mapping.InnerMaximum(); }), RuntimeError::Overflow);
    EXPECT_EQ(mapping.InnerMinimum(), 0);
    mapping.SetRange(0, -32768);
    EXPECT_EQ(mapping.InnerMaximum(), -32768);
    mapping.SetRange(32768, 0);
    EXPECT_EQ(Raised([&] { (void)mapping.InnerMinimum(); }), RuntimeError::Overflow);
    mapping.SetRange(32767, 0);
    EXPECT_EQ(mapping.InnerMinimum(), 32767);
}

TEST(BigScrollerMapping, ADirectMoveIsTheValue) {
    BigScrollerMapping mapping = Over(0, 100);
    EXPECT_TRUE(mapping.MovedTo(37, OneAndTen));
    EXPECT_EQ(mapping.Value(), 37);
    EXPECT_EQ(mapping.LastPosition(), 37);
    EXPECT_FALSE(mapping.MovedTo(37, OneAndTen));
    EXPECT_EQ(mapping.Value(), 37);
}

TEST(BigScrollerMapping, ADirectValueOutsideStopsAtTheBarsEnds) {
    BigScrollerMapping mapping = Over(-5, 100);
    EXPECT_EQ(mapping.SetValue(100, {-5, 100}), 100);
    EXPECT_EQ(mapping.SetValue(101, {-5, 100}), 100);
    EXPECT_EQ(mapping.Value(), 101);
    EXPECT_EQ(mapping.LastPosition(), 101);
    EXPECT_EQ(mapping.SetValue(-6, {-5, 100}), -5);
    EXPECT_EQ(mapping.LastPosition(), -6);
    EXPECT_EQ(mapping.SetValue(7, {10, 5}), 7);
    EXPECT_EQ(mapping.SetValue(11, {10, 5}), 10);
}

TEST(BigScrollerMapping, ADirectValueBeyondSixteenBitsIsAnOverflow) {
    BigScrollerMapping mapping = Over(0, 100);
    EXPECT_EQ(mapping.SetValue(32767, {0, 100}), 100);
    EXPECT_EQ(mapping.SetValue(-32768, {0, 100}), 0);
    EXPECT_EQ(Raised([&] { mapping.SetValue(32768, {0, 100}); }), RuntimeError::Overflow);
    EXPECT_EQ(mapping.Value(), 32768);
    EXPECT_EQ(mapping.LastPosition(), -32768);
    EXPECT_EQ(Raised([&] { mapping.SetValue(-32769, {0, 100}); }), RuntimeError::Overflow);
}

TEST(BigScrollerMapping, ADragScalesToTheRange) {
    BigScrollerMapping mapping = Over(0, 3'000'000);
    EXPECT_TRUE(mapping.MovedTo(15000, OneAndTen));
    EXPECT_EQ(mapping.Value(), 1'500'000);
    EXPECT_EQ(mapping.LastPosition(), 15000);
    mapping = Over(100000, 200000);
    EXPECT_TRUE(mapping.MovedTo(30000, OneAndTen));
    EXPECT_EQ(mapping.Value(), 200000);
    EXPECT_TRUE(mapping.MovedTo(0, OneAndTen));
    EXPECT_EQ(mapping.Value(), 100000);
}

TEST(BigScrollerMapping, ADragRoundsHalvesToEven) {
    BigScrollerMapping mapping = Over(0, 40001);
    mapping.MovedTo(15000, OneAndTen);
    EXPECT_EQ(mapping.Value(), 20000);
    mapping = Over(0, 40003);
    mapping.MovedTo(15000, OneAndTen);
    EXPECT_EQ(mapping.Value(), 20002);
    mapping = Over(-40001, 0);
    mapping.MovedTo(15000, OneAndTen);
    EXPECT_EQ(mapping.Value(), -20000);
}

TEST(BigScrollerMapping, AnArrowClickMovesByUnitsOfTheRange) {
    BigScrollerMapping mapping = Over(0, 3'000'000);
    EXPECT_TRUE(mapping.MovedTo(1, OneAndTen));
    EXPECT_EQ(mapping.Value(), 1);
    EXPECT_EQ(mapping.LastPosition(), 1);
    EXPECT_TRUE(mapping.MovedTo(0, OneAndTen));
    EXPECT_EQ(mapping.Value(), 0);
}

TEST(BigScrollerMapping, APageClickMovesByUnitsOfTheRange) {
    BigScrollerMapping mapping = Over(0, 3'000'000);
    EXPECT_TRUE(mapping.MovedTo(10, OneAndTen));
    EXPECT_EQ(mapping.Value(), 10);
    EXPECT_TRUE(mapping.MovedTo(0, OneAndTen));
    EXPECT_EQ(mapping.Value(), 0);
}

TEST(BigScrollerMapping, OneMoreOrLessThanAClickIsADrag) {
    for (const qint16 position : {qint16{9}, qint16{11}, qint16{2}}) {
        BigScrollerMapping mapping = Over(0, 3'000'000);
        mapping.MovedTo(position, OneAndTen);
        EXPECT_EQ(mapping.Value(), position * 100);
    }
}

TEST(BigScrollerMapping, ClicksAreNotLimitedToTheRange) {
    BigScrollerMapping mapping = Over(-3'000'000, 0);
    mapping.MovedTo(1, OneAndTen);
    EXPECT_EQ(mapping.Value(), 1);
    mapping.MovedTo(11, OneAndTen);
    EXPECT_EQ(mapping.Value(), 11);
    mapping = Over(100000, 200000);
    mapping.MovedTo(1, OneAndTen);
    EXPECT_EQ(mapping.Value(), 1);
}

TEST(BigScrollerMapping, ThumbAndValueAgreeAgainAfterADrag) {
    BigScrollerMapping mapping = Over(0, 3'000'000);
    mapping.MovedTo(1, OneAndTen);
    mapping.MovedTo(5, OneAndTen);
    EXPECT_EQ(mapping.Value(), 500);
}

TEST(BigScrollerMapping, AClickPastThirtyTwoBitsIsAnOverflow) {
    BigScrollerMapping mapping = Over(0, 60000);
    EXPECT_EQ(Raised([&] { mapping.SetValue(Highest - 1, ScaleEnds); }), RuntimeError::Overflow);
    EXPECT_TRUE(mapping.MovedTo(1, OneAndTen));
    EXPECT_EQ(mapping.Value(), 2147483647);
    EXPECT_EQ(Raised([&] { mapping.MovedTo(2, OneAndTen); }), RuntimeError::Overflow);
    EXPECT_EQ(mapping.Value(), 2147483647);
    EXPECT_EQ(mapping.LastPosition(), 1);
    EXPECT_EQ(Raised([&] { mapping.SetValue(Lowest + 10, ScaleEnds); }), RuntimeError::Overflow);
    mapping.MovedTo(0, OneAndTen);
    EXPECT_EQ(mapping.Value(), -2147483639);
}

TEST(BigScrollerMapping, APageClickBelowThirtyTwoBitsIsAnOverflow) {
    BigScrollerMapping mapping = Over(0, 60000);
    mapping.SetValue(40, ScaleEnds);
    EXPECT_EQ(mapping.LastPosition(), 20);
    EXPECT_EQ(Raised([&] { mapping.SetValue(Lowest + 10, ScaleEnds); }), RuntimeError::Overflow);
    EXPECT_TRUE(mapping.MovedTo(10, OneAndTen));
    EXPECT_EQ(mapping.Value(), Lowest);
    EXPECT_EQ(Raised([&] { mapping.MovedTo(0, OneAndTen); }), RuntimeError::Overflow);
    EXPECT_EQ(mapping.Value(), Lowest);
    EXPECT_EQ(mapping.LastPosition(), 10);
}

TEST(BigScrollerMapping, SettingAScaledValuePlacesTheThumb) {
    BigScrollerMapping mapping = Over(0, 3'000'000);
    EXPECT_EQ(mapping.SetValue(1'500'000, ScaleEnds), 15000);
    EXPECT_EQ(mapping.Value(), 1'500'000);
    EXPECT_FALSE(mapping.MovedTo(15000, OneAndTen));
    EXPECT_EQ(mapping.SetValue(3'000'000, ScaleEnds), 30000);
    EXPECT_EQ(mapping.SetValue(0, ScaleEnds), 0);
}

TEST(BigScrollerMapping, SettingAScaledValueRoundsHalvesToEven) {
    BigScrollerMapping mapping = Over(0, 65536);
    // 937.5 and 2812.5 positions.
    EXPECT_EQ(mapping.SetValue(2048, ScaleEnds), 938);
    EXPECT_EQ(mapping.SetValue(6144, ScaleEnds), 2812);
}

TEST(BigScrollerMapping, AScaledValueOutsideGivesAPositionOutsideTheScale) {
    BigScrollerMapping mapping = Over(0, 60000);
    EXPECT_EQ(mapping.SetValue(60002, ScaleEnds), 30001);
    EXPECT_EQ(mapping.SetValue(-2, ScaleEnds), -1);
    EXPECT_EQ(mapping.SetValue(65534, ScaleEnds), 32767);
    EXPECT_EQ(Raised([&] { mapping.SetValue(65536, ScaleEnds); }), RuntimeError::Overflow);
    EXPECT_EQ(mapping.Value(), 65536);
    EXPECT_EQ(mapping.LastPosition(), 32767);
    EXPECT_EQ(mapping.SetValue(-65536, ScaleEnds), -32768);
    EXPECT_EQ(Raised([&] { mapping.SetValue(-65539, ScaleEnds); }), RuntimeError::Overflow);
}

TEST(BigScrollerMapping, DifferencesMustFitThirtyTwoBits) {
    BigScrollerMapping mapping = Over(-1, Highest - 1);
    EXPECT_EQ(mapping.SetValue(Highest - 1, ScaleEnds), 30000);
    EXPECT_EQ(Raised([&] { mapping.SetValue(Highest, ScaleEnds); }), RuntimeError::Overflow);
    EXPECT_EQ(mapping.Value(), 2147483647);
    mapping = Over(-1, Highest);
    EXPECT_EQ(Raised([&] { mapping.SetValue(1, ScaleEnds); }), RuntimeError::Overflow);
    mapping = Over(Lowest, -1);
    EXPECT_EQ(mapping.SetValue(Lowest, ScaleEnds), 0);
    mapping = Over(Lowest, 0);
    EXPECT_EQ(Raised([&] { mapping.SetValue(-1, ScaleEnds); }), RuntimeError::Overflow);
}

TEST(BigScrollerMapping, ADragOverARangeOfMoreThanThirtyTwoBitsIsAnOverflow) {
    BigScrollerMapping mapping = Over(-2'000'000'000, 2'000'000'000);
    EXPECT_EQ(Raised([&] { mapping.MovedTo(500, OneAndTen); }), RuntimeError::Overflow);
    EXPECT_EQ(mapping.Value(), 0);
    EXPECT_EQ(mapping.LastPosition(), 500);
    EXPECT_TRUE(mapping.MovedTo(501, OneAndTen));
    EXPECT_EQ(mapping.Value(), 1);
}

TEST(BigScrollerMapping, AScaledRangeWithoutExtentCannotPlaceAValue) {
    BigScrollerMapping mapping = Over(40000, 40000);
    EXPECT_EQ(Raised([&] { mapping.SetValue(40001, ScaleEnds); }), RuntimeError::DivisionByZero);
    EXPECT_EQ(mapping.Value(), 40001);
    EXPECT_TRUE(mapping.MovedTo(15000, OneAndTen));
    EXPECT_EQ(mapping.Value(), 40000);
}

TEST(BigScrollerMapping, AMoveOfMoreThanSixteenBitsIsAnOverflow) {
    BigScrollerMapping mapping = Over(0, 60000);
    mapping.SetValue(-65536, ScaleEnds);
    EXPECT_EQ(mapping.LastPosition(), -32768);
    EXPECT_EQ(Raised([&] { mapping.MovedTo(0, OneAndTen); }), RuntimeError::Overflow);
    EXPECT_EQ(mapping.Value(), -65536);
}

}  // namespace
}  // namespace quarv
