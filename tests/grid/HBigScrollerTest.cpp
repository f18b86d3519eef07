#include "grid/HBigScroller.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "base/LateBinding.h"
#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TextBox.h"
#include "support/Raised.h"
#include "support/ScrollBarMouse.h"

namespace quarv {
namespace {

using test::ClickOn;
using test::HeldThumb;

class BigScroller : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    HBigScroller scroller{&form, u"HScr"_qs};
    forms::ScrollBar& bar = *scroller.findChild<forms::ScrollBar*>(u"Scroller"_qs);
    QSignalSpy changed{&scroller, &HBigScroller::Change};

    void SetUp() override {
        form.Move(0, 0, 9000, 6000);
        scroller.Move(0, 0, 6000, 300);
        form.Show();
    }
};

TEST_F(BigScroller, StartsWithZeroToHundred) {
    EXPECT_EQ(scroller.Min(), 0);
    EXPECT_EQ(scroller.Max(), 100);
    EXPECT_EQ(scroller.Value(), 0);
    EXPECT_EQ(bar.Min(), 0);
    EXPECT_EQ(bar.Max(), 100);
    EXPECT_EQ(bar.orientation(), Qt::Horizontal);
    EXPECT_EQ(scroller.TypeName(), u"HBigScroller"_qs);
}

TEST_F(BigScroller, ADirectRangeIsTheInnerBarsOwn) {
    scroller.SetRange(-32699, 32699);
    EXPECT_EQ(bar.Min(), -32699);
    EXPECT_EQ(bar.Max(), 32699);
    EXPECT_EQ(bar.Value(), -32699);
    EXPECT_EQ(scroller.Value(), -32699);
}

TEST_F(BigScroller, AWideRangeRunsOverTheScale) {
    for (const auto& [low, high] : {std::pair{-32700, 0}, std::pair{0, 32700}}) {
        scroller.SetRange(low, high);
        EXPECT_EQ(bar.Min(), 0);
        EXPECT_EQ(bar.Max(), 30000);
        EXPECT_EQ(bar.Value(), 0);
        EXPECT_EQ(scroller.Min(), low);
        EXPECT_EQ(scroller.Max(), high);
        EXPECT_EQ(scroller.Value(), 0);
    }
}

TEST_F(BigScroller, ANewRangeGoesToTheLowEndAndRaisesNothing) {
    scroller.SetValue(50);
    scroller.SetRange(60, 100);
    EXPECT_EQ(scroller.Value(), 60);
    EXPECT_EQ(bar.Value(), 60);
    scroller.SetValue(90);
    scroller.SetRange(0, 20);
    EXPECT_EQ(scroller.Value(), 0);
    EXPECT_EQ(bar.Value(), 0);
    scroller.SetRange(-300, -200);
    EXPECT_EQ(bar.Min(), -300);
    EXPECT_EQ(bar.Max(), -200);
    EXPECT_EQ(scroller.Value(), -300);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(BigScroller, AnEndThatDoesNotFitTheDirectBarIsAnOverflow) {
    EXPECT_EQ(Raised([&] { scroller.SetRange(0, -40000); }), RuntimeError::Overflow);
    EXPECT_EQ(Raised([&] { scroller.SetRange(40000, 0); }), RuntimeError::Overflow);
    EXPECT_EQ(scroller.Min(), 40000);
}

TEST_F(BigScroller, AScaledRangeReadsZeroUntilTheBarMoves) {
    scroller.SetRange(100000, 200000);
    EXPECT_EQ(scroller.Value(), 0);
    bar.SetValue(15000);
    EXPECT_EQ(scroller.Value(), 150000);
}

TEST_F(BigScroller, WritingAnEndSetsTheRangeAnew) {
    scroller.SetValue(40);
    scroller.SetMax(200);
    EXPECT_EQ(scroller.Value(), 0);
    EXPECT_EQ(scroller.Min(), 0);
    EXPECT_EQ(bar.Max(), 200);
    scroller.SetMin(10);
    EXPECT_EQ(scroller.Value(), 10);
    EXPECT_EQ(scroller.Max(), 200);
}

TEST_F(BigScroller, WritingAnEndAsItIsKeepsThePosition) {
    scroller.SetValue(40);
    scroller.SetMax(100);
    scroller.SetMin(0);
    EXPECT_EQ(scroller.Value(), 40);
    EXPECT_EQ(bar.Value(), 40);
}

TEST_F(BigScroller, StepsAreTheInnerBars) {
    scroller.SetSmallChange(3);
    scroller.SetLargeChange(30);
    EXPECT_EQ(bar.SmallChange(), 3);
    EXPECT_EQ(bar.LargeChange(), 30);
    bar.SetLargeChange(31);
    EXPECT_EQ(scroller.SmallChange(), 3);
    EXPECT_EQ(scroller.LargeChange(), 31);
    EXPECT_EQ(Raised([&] { scroller.SetSmallChange(0); }), RuntimeError::InvalidPropertyValue);
}

TEST_F(BigScroller, WritingTheValueRaisesNoChange) {
    scroller.SetValue(70);
    EXPECT_EQ(bar.Value(), 70);
    scroller.SetRange(0, 3'000'000);
    scroller.SetValue(1'500'000);
    EXPECT_EQ(bar.Value(), 15000);
    EXPECT_EQ(scroller.Value(), 1'500'000);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(BigScroller, AValueBeyondTheEndMovesTheBarThereAndRaisesChange) {
    scroller.SetValue(150);
    EXPECT_EQ(bar.Value(), 100);
    EXPECT_EQ(scroller.Value(), 100);
    EXPECT_EQ(changed.count(), 1);
    // The bar stands there already: nothing moves, and the value stays as written.
    scroller.SetValue(160);
    EXPECT_EQ(scroller.Value(), 160);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(BigScroller, AScaledValueOutsideIsRefused) {
    scroller.SetRange(0, 60000);
    EXPECT_EQ(Raised([&] { scroller.SetValue(60002); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(scroller.Value(), 60002);
    EXPECT_EQ(bar.Value(), 0);
    EXPECT_EQ(Raised([&] { scroller.SetValue(-2); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(Raised([&] { scroller.SetValue(2'000'000'000); }), RuntimeError::Overflow);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(BigScroller, AnArrowClickOfAScaledRangeMovesByUnits) {
    scroller.SetRange(0, 3'000'000);
    ClickOn(bar, QStyle::SC_ScrollBarAddLine);
    EXPECT_EQ(scroller.Value(), 1);
    EXPECT_EQ(bar.Value(), 1);
    EXPECT_EQ(changed.count(), 1);
    ClickOn(bar, QStyle::SC_ScrollBarSubLine);
    EXPECT_EQ(scroller.Value(), 0);
}

TEST_F(BigScroller, APageClickOfAScaledRangeMovesByUnits) {
    scroller.SetLargeChange(1000);
    scroller.SetRange(0, 3'000'000);
    ClickOn(bar, QStyle::SC_ScrollBarAddPage);
    EXPECT_EQ(scroller.Value(), 1000);
    EXPECT_EQ(bar.Value(), 1000);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(BigScroller, ClicksOfADirectRangeMoveByTheSteps) {
    scroller.SetLargeChange(10);
    ClickOn(bar, QStyle::SC_ScrollBarAddLine);
    ClickOn(bar, QStyle::SC_ScrollBarAddPage);
    EXPECT_EQ(scroller.Value(), 11);
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(BigScroller, ADragToTheMiddleOfTheScaleIsTheMiddleOfTheRange) {
    scroller.SetRange(0, 3'000'000);
    if (test::TravelOf(bar) % 2 != 0) scroller.SetWidth(scroller.Width() + 15);
    QSignalSpy scrolled(&scroller, &HBigScroller::Scroll);
    {
        HeldThumb thumb(bar);
        thumb.MoveBy(test::TravelOf(bar) / 2);
        EXPECT_EQ(bar.Value(), 15000);
        EXPECT_EQ(scroller.Value(), 1'500'000);
        EXPECT_EQ(changed.count(), 1);
    }
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(scrolled.count(), 0);
}

TEST_F(BigScroller, EveryMoveOfADragRaisesChange) {
    HeldThumb thumb(bar);
    thumb.MoveBy(40);
    thumb.MoveBy(40);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(scroller.Value(), bar.Value());
    EXPECT_GT(scroller.Value(), 0);
}

TEST_F(BigScroller, AHiddenOneTakesNoChange) {
    scroller.SetVisible(false);
    bar.SetValue(50);
    EXPECT_EQ(scroller.Value(), 0);
    EXPECT_EQ(changed.count(), 0);
    scroller.SetVisible(true);
    bar.SetValue(51);
    EXPECT_EQ(scroller.Value(), 51);
    EXPECT_EQ(changed.count(), 1);
}

TEST(HBigScroller, OneOnAHiddenFormTakesChanges) {
    forms::Form form(u"F"_qs);
    HBigScroller scroller(&form, u"HScr"_qs);
    scroller.findChild<forms::ScrollBar*>()->SetValue(50);
    EXPECT_EQ(scroller.Value(), 50);
}

TEST_F(BigScroller, AnOverflowInAMoveEndsTheEvent) {
    scroller.SetRange(-2'000'000'000, 2'000'000'000);
    testing::internal::CaptureStderr();
    bar.SetValue(500);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "6: Overflow\n");
    EXPECT_EQ(scroller.Value(), 0);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(BigScroller, MembersAreReachedByName) {
    CallByName(&scroller, u"SetRange"_qs, {Value(0), Value(60000)});
    SetByName(&scroller, u"SmallChange"_qs, Value(4));
    SetByName(&scroller, u"LargeChange"_qs, Value(40));
    SetByName(&scroller, u"Value"_qs, Value(30000));
    EXPECT_EQ(bar.Value(), 15000);
    SetByName(&scroller, u"Max"_qs, Value(50));
    SetByName(&scroller, u"Min"_qs, Value(5));
    EXPECT_EQ(GetByName(&scroller, u"Value"_qs).ToInteger(), 5);
    EXPECT_EQ(GetByName(&scroller, u"SmallChange"_qs).ToInteger(), 4);
}

}  // namespace
}  // namespace quarv
