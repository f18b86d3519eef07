#include "controls/RaisedPanel.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "base/RuntimeError.h"
#include "controls/RCheckbox.h"
#include "platform/forms/Form.h"
#include "platform/forms/Label.h"
#include "support/Raised.h"

namespace quarv {
namespace {

constexpr QPoint Free(150, 50);  // on the panel alone
constexpr QPoint OnTheLabel(10, 10);
constexpr QPoint OnTheInner(60, 60);
constexpr QPoint OnTheBox(170, 10);
constexpr QPoint Outside(250, 50);

class RaisedPanelClick : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    RaisedPanel panel{&form, u"Panel"_qs};
    forms::Label label{&panel, u"Label"_qs};
    RaisedPanel inner{&panel, u"Inner"_qs};
    QSignalSpy clicks{&panel, &RaisedPanel::Click};
    QSignalSpy innerClicks{&inner, &RaisedPanel::Click};

    void SetUp() override {
        panel.Move(0, 0, 3000, 1500);
        label.Move(0, 0, 450, 300);
        inner.Move(750, 750, 450, 450);
        form.Show();
    }

    // To the window, as the desktop sends it: Qt finds the control.
    void Click(QPoint place, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(form.windowHandle(), button, {}, place);
    }
    void Press(QPoint place) { QTest::mousePress(form.windowHandle(), Qt::LeftButton, {}, place); }
    void Release(QPoint place) {
        QTest::mouseRelease(form.windowHandle(), Qt::LeftButton, {}, place);
    }
};

TEST_F(RaisedPanelClick, IsRaisedWhenThePanelIsClicked) {
    Click(Free);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(RaisedPanelClick, IsRaisedTwiceForADoubleClick) {
    QTest::mouseDClick(form.windowHandle(), Qt::LeftButton, {}, Free);
    EXPECT_EQ(clicks.count(), 2);
}

TEST_F(RaisedPanelClick, IsOfTheLeftButtonAlone) {
    Click(Free, Qt::RightButton);
    Click(Free, Qt::MiddleButton);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(RaisedPanelClick, AControlThatLetsClicksThroughIsNotThePanel) {
    Click(OnTheLabel);
    EXPECT_EQ(clicks.count(), 0);
}

// Qt hands what a disabled control got on to what it stands on.
TEST_F(RaisedPanelClick, ADisabledControlIsNotThePanel) {
    RCheckbox box(&panel, u"Check"_qs);
    box.Move(2400, 0, 300, 300);
    box.SetVisible(true);
    Click(OnTheBox);
    EXPECT_TRUE(box.Checked());
    box.SetEnabled(false);
    Click(OnTheBox);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(RaisedPanelClick, WhereAControlIsHiddenThePanelIsClicked) {
    label.SetVisible(false);
    Click(OnTheLabel);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(RaisedPanelClick, APanelOnAPanelIsClickedAlone) {
    Click(OnTheInner);
    EXPECT_EQ(innerClicks.count(), 1);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(RaisedPanelClick, BothHalvesMustBeOnThePanel) {
    Press(Free);
    Release(Outside);
    Press(Free);
    Release(OnTheLabel);
    Press(OnTheLabel);
    Release(Free);
    Press(Outside);
    Release(Free);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(RaisedPanelClick, HiddenOrDisabledInBetweenItForgetsThePress) {
    Press(Free);
    panel.SetEnabled(false);
    panel.SetEnabled(true);
    Release(Free);
    Press(Free);
    panel.SetVisible(false);
    panel.SetVisible(true);
    QTest::mouseRelease(&panel, Qt::LeftButton, {}, Free);
    EXPECT_EQ(clicks.count(), 0);
    Release(Free);
}

TEST_F(RaisedPanelClick, ADisabledPanelIsNotClicked) {
    panel.SetEnabled(false);
    Click(Free);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(RaisedPanelClick, WhileItIsDesignedItIsNotClicked) {
    form.SetUserMode(false);
    Click(Free);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(RaisedPanelClick, AFailingHandlerEndsItsEventOnly) {
    QObject::connect(&panel, &RaisedPanel::Click, &panel,
                     [] { throw RuntimeError(RuntimeError::Overflow); });
    testing::internal::CaptureStderr();
    Click(Free);
    Click(Free);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("6: "), std::string::npos);
    EXPECT_EQ(clicks.count(), 2);
}

TEST_F(RaisedPanelClick, TheKeyboardPassesItBy) {
    EXPECT_EQ(panel.focusPolicy(), Qt::NoFocus);
    QTest::keyClick(&panel, Qt::Key_Space);
    QTest::keyClick(&panel, Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 0);
}

}  // namespace
}  // namespace quarv
