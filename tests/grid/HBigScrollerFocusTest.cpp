// The parts of HBigScroller: where they are, what draws them anew, and where the focus goes.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QFocusEvent>
#include <QSignalSpy>

#include "base/LateBinding.h"
#include "grid/HBigScroller.h"
#include "platform/forms/Form.h"
#include "platform/forms/Label.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TextBox.h"
#include "support/PaintCounter.h"
#include "support/Raised.h"
#include "support/ScrollBarMouse.h"

namespace quarv {
namespace {

using test::ClickOn;
using test::PaintCounter;

class BigScrollerFocus : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    forms::TextBox before{&form, u"Before"_qs};
    HBigScroller scroller{&form, u"HScr"_qs};
    forms::TextBox after{&form, u"After"_qs};
    forms::ScrollBar& bar = *scroller.findChild<forms::ScrollBar*>(u"Scroller"_qs);
    forms::TextBox& grabber = *scroller.findChild<forms::TextBox*>(u"FocusGrabber"_qs);

    void SetUp() override {
        form.Move(0, 0, 9000, 6000);
        scroller.Move(0, 0, 6000, 300);
        before.Move(0, 1000, 3000, 300);
        after.Move(0, 2000, 3000, 300);
        form.Show();
        QApplication::setActiveWindow(&form);
    }
    static QWidget* Focused() { return QApplication::focusWidget(); }
};

TEST_F(BigScrollerFocus, TheBarFillsTheControlAndTheGrabberIsOutside) {
    const double top = grabber.Top();
    const double width = grabber.Width();
    const double height = grabber.Height();
    scroller.Move(300, 600, 4500.5, 255);
    EXPECT_EQ(bar.Left(), 0);
    EXPECT_EQ(bar.Top(), 0);
    EXPECT_EQ(bar.Width(), 4500.5);
    EXPECT_EQ(bar.Height(), 255);
    EXPECT_EQ(grabber.Left(), 4600.5);
    EXPECT_EQ(grabber.Top(), top);
    EXPECT_EQ(grabber.Width(), width);
    EXPECT_EQ(grabber.Height(), height);
}

TEST_F(BigScrollerFocus, ItKnowsWhetherTheBarHasTheFocus) {
    EXPECT_FALSE(scroller.HasFocus());
    scroller.SetFocus();
    EXPECT_EQ(Focused(), &bar);
    EXPECT_TRUE(scroller.HasFocus());
    after.SetFocus();
    EXPECT_FALSE(scroller.HasFocus());
}

TEST_F(BigScrollerFocus, AClickLeavesTheFocusWithTheGrabber) {
    ClickOn(bar, QStyle::SC_ScrollBarAddLine);
    EXPECT_EQ(Focused(), grabber.focusProxy());
    EXPECT_FALSE(scroller.HasFocus());
    ClickOn(bar, QStyle::SC_ScrollBarAddLine);
    EXPECT_EQ(scroller.Value(), 2);
    EXPECT_EQ(Focused(), grabber.focusProxy());
}

TEST_F(BigScrollerFocus, ADragKeepsTheFocusUntilItsEnd) {
    {
        test::HeldThumb thumb(bar);
        thumb.MoveBy(40);
        EXPECT_EQ(Focused(), &bar);
    }
    EXPECT_EQ(Focused(), grabber.focusProxy());
}

TEST_F(BigScrollerFocus, WritingTheValueMovesTheFocusOffTheBarOnly) {
    bar.SetFocus();
    scroller.SetValue(20);
    EXPECT_EQ(Focused(), grabber.focusProxy());
    after.SetFocus();
    scroller.SetValue(30);
    EXPECT_EQ(Focused(), after.focusProxy());
}

TEST_F(BigScrollerFocus, AHiddenOneMovesNoFocus) {
    forms::Form hidden(u"Hidden"_qs);
    HBigScroller unseen(&hidden, u"HScr"_qs);
    auto& inner = *unseen.findChild<forms::ScrollBar*>();
    auto& parked = *unseen.findChild<forms::TextBox*>();
    QFocusEvent got(QEvent::FocusIn);
    QCoreApplication::sendEvent(&inner, &got);
    ASSERT_TRUE(unseen.HasFocus());
    unseen.SetVisible(false);
    inner.SetValue(1);
    EXPECT_NE(hidden.focusWidget(), parked.focusProxy());
    unseen.SetVisible(true);
    inner.SetValue(2);
    EXPECT_EQ(hidden.focusWidget(), parked.focusProxy());
}

TEST_F(BigScrollerFocus, TheGrabberNeverShowsWhatIsTyped) {
    grabber.SetFocus();
    QSignalSpy changed(&grabber, &forms::TextBox::Change);
    QTest::keyClicks(Focused(), u"abc"_qs);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(grabber.Text(), u""_qs);
}

TEST_F(BigScrollerFocus, TheGrabberEmptiesWhateverTextItGets) {
    grabber.SetText(u"text"_qs);
    EXPECT_EQ(grabber.Text(), u""_qs);
}

TEST_F(BigScrollerFocus, TheGrabberEmptiesWhatIsPasted) {
    QApplication::clipboard()->setText(u"pasted"_qs);
    grabber.SetFocus();
    QSignalSpy changed(&grabber, &forms::TextBox::Change);
    QTest::keyClick(Focused(), Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_GT(changed.count(), 0);
    EXPECT_EQ(grabber.Text(), u""_qs);
}

TEST_F(BigScrollerFocus, TheTabKeyPassesOverTheGrabber) {
    before.SetFocus();
    QTest::keyClick(Focused(), Qt::Key_Tab);
    EXPECT_EQ(Focused(), &bar);
    QTest::keyClick(Focused(), Qt::Key_Tab);
    EXPECT_EQ(Focused(), after.focusProxy());
}

TEST_F(BigScrollerFocus, TheBarSpeaksTheControlsName) {
    EXPECT_EQ(bar.accessibleName(), u"HScr"_qs);
    scroller.SetSpokenName(u"Columns"_qs);
    EXPECT_EQ(bar.accessibleName(), u"Columns"_qs);
}

TEST_F(BigScrollerFocus, WritingEnabledIsAnnouncedAndReachesTheBar) {
    QSignalSpy announced(&scroller, &forms::UserControl::PropertyChanged);
    scroller.SetEnabled(false);
    EXPECT_FALSE(scroller.Enabled());
    EXPECT_FALSE(bar.isEnabled());
    ASSERT_EQ(announced.count(), 1);
    EXPECT_EQ(announced.at(0).at(0).toString(), u"Enabled"_qs);
    SetByName(&scroller, u"Enabled"_qs, Value(true));
    EXPECT_TRUE(bar.isEnabled());
    EXPECT_EQ(announced.count(), 2);
}

TEST_F(BigScrollerFocus, ReadingAndWritingEnabledDrawTheBarAnew) {
    PaintCounter counter(bar);
    counter.Taken();
    EXPECT_TRUE(scroller.Enabled());
    EXPECT_EQ(counter.Taken(), 1);
    scroller.SetEnabled(true);
    EXPECT_EQ(counter.Taken(), 1);
}

}  // namespace
}  // namespace quarv
