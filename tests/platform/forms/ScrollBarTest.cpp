#include "platform/forms/ScrollBar.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QSignalSpy>
#include <QWheelEvent>

#include "base/LateBinding.h"
#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "support/Raised.h"
#include "support/ScrollBarMouse.h"

namespace quarv::forms {
namespace {

using test::ClickOn;
using test::HeldThumb;
using test::PartOf;

class ScrollBars : public testing::Test {
  protected:
    Form form{u"F"_qs};
    ScrollBar bar{&form, u"HScr"_qs, Qt::Horizontal};
    QSignalSpy changed{&bar, &ScrollBar::Change};
    QSignalSpy scrolled{&bar, &ScrollBar::Scroll};

    void SetUp() override {
        form.Move(0, 0, 9000, 6000);
        bar.Move(0, 0, 6000, 300);
        bar.SetMax(1000);
        bar.SetLargeChange(100);
        form.Show();
        QApplication::setActiveWindow(&form);
    }
};

TEST(ScrollBar, StartsWithAllPositionsOfSixteenBits) {
    const ScrollBar bar(nullptr, u"V"_qs, Qt::Vertical);
    EXPECT_EQ(bar.Min(), 0);
    EXPECT_EQ(bar.Max(), 32767);
    EXPECT_EQ(bar.Value(), 0);
    EXPECT_EQ(bar.SmallChange(), 1);
    EXPECT_EQ(bar.LargeChange(), 1);
    EXPECT_EQ(bar.TypeName(), u"ScrollBar"_qs);
}

TEST(ScrollBar, IsAsThickAsTheDesktopsBars) {
    ScrollBar bar(nullptr, u"V"_qs, Qt::Vertical);
    EXPECT_GT(bar.Extent(), 0);
    EXPECT_EQ(bar.Extent(), 15.0 * bar.sizeHint().width());
}

TEST_F(ScrollBars, SpeaksItsName) {
    EXPECT_EQ(bar.accessibleName(), u"HScr"_qs);
    bar.SetSpokenName(u"Rows"_qs);
    EXPECT_EQ(bar.accessibleName(), u"Rows"_qs);
}

TEST_F(ScrollBars, AValueOutsideTheRangeIsRefused) {
    bar.SetMin(-10);
    bar.SetValue(-10);
    EXPECT_EQ(bar.Value(), -10);
    bar.SetValue(1000);
    EXPECT_EQ(bar.Value(), 1000);
    EXPECT_EQ(Raised([&] { bar.SetValue(1001); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(Raised([&] { bar.SetValue(-11); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(bar.Value(), 1000);
}

TEST_F(ScrollBars, StepsBelowOneAreRefused) {
    EXPECT_EQ(Raised([&] { bar.SetSmallChange(0); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(Raised([&] { bar.SetLargeChange(0); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(bar.SmallChange(), 1);
    EXPECT_EQ(bar.LargeChange(), 100);
    bar.SetSmallChange(32767);
    EXPECT_EQ(bar.SmallChange(), 32767);
}

TEST_F(ScrollBars, ANewRangeMovesTheValueIntoIt) {
    bar.SetValue(500);
    changed.clear();
    bar.SetMax(500);
    bar.SetMin(500);
    EXPECT_EQ(changed.count(), 0);
    bar.SetMin(0);
    bar.SetMax(499);
    EXPECT_EQ(bar.Value(), 499);
    EXPECT_EQ(changed.count(), 1);
    bar.SetValue(0);
    bar.SetMin(20);
    EXPECT_EQ(bar.Value(), 20);
    EXPECT_EQ(changed.count(), 3);
}

TEST_F(ScrollBars, AProgramsWriteRaisesChangeWhereTheValueBecomesAnother) {
    qint16 seen = 0;
    QObject::connect(&bar, &ScrollBar::Change, &form, [&] { seen = bar.Value(); });
    bar.SetValue(5);
    bar.SetValue(5);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(scrolled.count(), 0);
    EXPECT_EQ(seen, 5);
}

TEST_F(ScrollBars, ArrowsMoveByTheSmallChange) {
    bar.SetSmallChange(7);
    ClickOn(bar, QStyle::SC_ScrollBarAddLine);
    EXPECT_EQ(bar.Value(), 7);
    ClickOn(bar, QStyle::SC_ScrollBarAddLine);
    ClickOn(bar, QStyle::SC_ScrollBarSubLine);
    EXPECT_EQ(bar.Value(), 7);
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(scrolled.count(), 0);
}

TEST_F(ScrollBars, AnArrowAtItsEndChangesNothing) {
    ClickOn(bar, QStyle::SC_ScrollBarSubLine);
    EXPECT_EQ(bar.Value(), 0);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(ScrollBars, ClicksBesideTheThumbMoveByTheLargeChange) {
    ClickOn(bar, QStyle::SC_ScrollBarAddPage);
    EXPECT_EQ(bar.Value(), 100);
    EXPECT_EQ(changed.count(), 1);
    bar.SetValue(1000);
    ClickOn(bar, QStyle::SC_ScrollBarSubPage);
    EXPECT_EQ(bar.Value(), 900);
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(scrolled.count(), 0);
}

TEST_F(ScrollBars, ADragRaisesScrollAtEachMoveAndChangeOnceAtItsEnd) {
    {
        HeldThumb thumb(bar);
        thumb.MoveBy(20);
        const qint16 first = bar.Value();
        EXPECT_GT(first, 0);
        thumb.MoveBy(20);
        EXPECT_GT(bar.Value(), first);
        EXPECT_EQ(scrolled.count(), 2);
        EXPECT_EQ(changed.count(), 0);
    }
    EXPECT_EQ(scrolled.count(), 2);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(ScrollBars, ADragBackToItsStartIsNoChange) {
    {
        HeldThumb thumb(bar);
        thumb.MoveBy(20);
        thumb.MoveBy(-20);
        EXPECT_EQ(bar.Value(), 0);
    }
    EXPECT_EQ(scrolled.count(), 2);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(ScrollBars, APressedThumbThatStaysRaisesNothing) {
    ClickOn(bar, QStyle::SC_ScrollBarSlider);
    EXPECT_EQ(scrolled.count() + changed.count(), 0);
}

TEST_F(ScrollBars, AWriteDuringADragIsAChangeAtOnceAndNoScroll) {
    HeldThumb thumb(bar);
    thumb.MoveBy(20);
    bar.SetValue(0);
    EXPECT_EQ(scrolled.count(), 1);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(ScrollBars, ANewRangeDuringADragKeepsTheDrag) {
    {
        HeldThumb thumb(bar);
        thumb.MoveBy(20);
        bar.SetMax(2000);
        EXPECT_EQ(changed.count(), 0);
    }
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(ScrollBars, HidingTheBarEndsTheDrag) {
    {
        HeldThumb thumb(bar);
        thumb.MoveBy(20);
        bar.SetVisible(false);
        EXPECT_EQ(changed.count(), 1);
    }
    bar.SetVisible(true);
    ClickOn(bar, QStyle::SC_ScrollBarAddLine);
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(ScrollBars, KeysMoveTheBar) {
    bar.SetFocus();
    const std::vector<std::pair<Qt::Key, int>> moves = {
        {Qt::Key_Right, 1},      {Qt::Key_Down, 2},   {Qt::Key_Left, 1},   {Qt::Key_Up, 0},
        {Qt::Key_PageDown, 100}, {Qt::Key_PageUp, 0}, {Qt::Key_End, 1000}, {Qt::Key_Home, 0}};
    for (const auto& [key, value] : moves) {
        QTest::keyClick(&bar, key);
        EXPECT_EQ(bar.Value(), value) << key;
    }
    EXPECT_EQ(changed.count(), 8);
}

TEST_F(ScrollBars, ArrowKeysFollowTheReadingDirection) {
    bar.setLayoutDirection(Qt::RightToLeft);
    QTest::keyClick(&bar, Qt::Key_Left);
    EXPECT_EQ(bar.Value(), 1);
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(bar.Value(), 0);
}

TEST_F(ScrollBars, TheWheelMovesTheBar) {
    ScrollBar rows(&form, u"VScr"_qs, Qt::Vertical);
    rows.Move(0, 600, 300, 4000);
    rows.SetLargeChange(10);
    QSignalSpy rowsChanged(&rows, &ScrollBar::Change);
    QWheelEvent wheel(QPointF(5, 5), rows.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&rows, &wheel);
    EXPECT_EQ(rows.Value(), 3);
    EXPECT_EQ(rowsChanged.count(), 1);
    QWheelEvent right(QPointF(5, 5), bar.mapToGlobal(QPointF(5, 5)), {}, {-120, 0}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&bar, &right);
    EXPECT_EQ(bar.Value(), 3);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(ScrollBars, AReversedRangeRunsFromMinAtTheLeft) {
    bar.SetMax(0);
    bar.SetMin(1000);
    bar.SetValue(1000);
    EXPECT_EQ(Raised([&] { bar.SetValue(1001); }), RuntimeError::InvalidPropertyValue);
    const int left = PartOf(bar, QStyle::SC_ScrollBarSlider).left();
    EXPECT_EQ(left, PartOf(bar, QStyle::SC_ScrollBarGroove).left());
    ClickOn(bar, QStyle::SC_ScrollBarAddLine);
    EXPECT_EQ(bar.Value(), 999);
    ClickOn(bar, QStyle::SC_ScrollBarAddPage);
    EXPECT_EQ(bar.Value(), 899);
}

TEST_F(ScrollBars, SaysWhereTheFocusIs) {
    QLineEdit other(&form);
    other.show();
    other.setFocus();
    QSignalSpy got(&bar, &ScrollBar::GotFocus);
    QSignalSpy lost(&bar, &ScrollBar::LostFocus);
    bar.SetFocus();
    EXPECT_EQ(got.count(), 1);
    EXPECT_EQ(lost.count(), 0);
    other.setFocus();
    EXPECT_EQ(got.count(), 1);
    EXPECT_EQ(lost.count(), 1);
}

TEST_F(ScrollBars, AFailingHandlerEndsItsEventOnly) {
    QObject::connect(&bar, &ScrollBar::Change, &form,
                     [] { throw RuntimeError(RuntimeError::Overflow); });
    testing::internal::CaptureStderr();
    ClickOn(bar, QStyle::SC_ScrollBarAddLine);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "6: Overflow\n");
    EXPECT_EQ(bar.Value(), 1);
}

TEST_F(ScrollBars, MembersAreReachedByName) {
    SetByName(&bar, u"Max"_qs, Value(50));
    SetByName(&bar, u"Min"_qs, Value(-50));
    SetByName(&bar, u"SmallChange"_qs, Value(2));
    SetByName(&bar, u"LargeChange"_qs, Value(20));
    SetByName(&bar, u"Value"_qs, Value(-50));
    EXPECT_EQ(GetByName(&bar, u"Value"_qs).ToInteger(), -50);
    EXPECT_EQ(GetByName(&bar, u"LargeChange"_qs).ToInteger(), 20);
    EXPECT_EQ(Raised([&] { SetByName(&bar, u"Max"_qs, Value(40000)); }), RuntimeError::Overflow);
    EXPECT_EQ(Raised([&] { SetByName(&bar, u"Value"_qs, Value(51)); }),
              RuntimeError::InvalidPropertyValue);
}

}  // namespace
}  // namespace quarv::forms
