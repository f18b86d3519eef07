#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include "controls/RButton.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/Form.h"
#include "support/FilledPicture.h"
#include "support/TextPrinter.h"

namespace quarv {
namespace {

class RButtonKeyboard : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    forms::ButtonPlus okay{&form, u"Okay"_qs};
    RButton button{&form, u"Run"_qs};
    QSignalSpy clicked{&button, &RButton::Click};

    void SetUp() override {
        okay.SetDefault(true);
        button.Move(150, 150, 600, 450);
        button.SetPicture(test::FilledPicture(Qt::red));
        button.SetBackColor(0x00FFFFFF);
        form.Show();
        QApplication::setActiveWindow(&form);
        okay.SetFocus();
    }

    QColor Pixel(int x, int y) { return button.grab().toImage().pixelColor(x, y); }
};

TEST_F(RButtonKeyboard, TabReachesItAndAMarkShowsIt) {
    EXPECT_EQ(Pixel(3, 3), QColor(Qt::white));
    QTest::keyClick(&okay, Qt::Key_Tab);
    EXPECT_TRUE(button.hasFocus());
    EXPECT_EQ(Pixel(3, 3), QColor(Qt::black));
}

TEST_F(RButtonKeyboard, SpaceHoldsItDownAndClicksWhenItComesUp) {
    button.SetFocus();
    QTest::keyPress(&button, Qt::Key_Space);
    EXPECT_TRUE(button.IsPressed());
    EXPECT_EQ(Pixel(14, 9), QColor(Qt::red));
    EXPECT_EQ(Pixel(13, 9), QColor(Qt::white));
    EXPECT_EQ(clicked.count(), 0);
    QTest::keyRelease(&button, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_FALSE(button.IsPressed());
}

TEST_F(RButtonKeyboard, EnterClicksItAndNotTheDefaultButton) {
    QSignalSpy okayed(&okay, &forms::ButtonPlus::Click);
    button.SetFocus();
    QTest::keyClick(&button, Qt::Key_Return);
    QTest::keyClick(&button, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(clicked.count(), 2);
    EXPECT_EQ(okayed.count(), 0);
}

TEST_F(RButtonKeyboard, AKeyHeldDownClicksOnce) {
    button.SetFocus();
    for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
        clicked.clear();
        QTest::keyPress(&button, key);
        for (int i = 0; i < 3; ++i) {
            QKeyEvent up(QEvent::KeyRelease, key, {}, {}, true);
            QApplication::sendEvent(&button, &up);
            QKeyEvent down(QEvent::KeyPress, key, {}, {}, true);
            QApplication::sendEvent(&button, &down);
        }
        QTest::keyRelease(&button, key);
        EXPECT_EQ(clicked.count(), 1);
    }
}

TEST_F(RButtonKeyboard, LosingTheFocusLetsGoWithoutAClick) {
    button.SetFocus();
    QTest::keyPress(&button, Qt::Key_Space);
    okay.SetFocus();
    EXPECT_FALSE(button.IsPressed());
    QTest::keyRelease(&button, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(RButtonKeyboard, OtherKeysAndShortcutsPassOn) {
    button.SetFocus();
    QTest::keyClick(&button, Qt::Key_A);
    QTest::keyClick(&button, Qt::Key_Space, Qt::ControlModifier);
    QTest::keyClick(&button, Qt::Key_Return, Qt::AltModifier);
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_FALSE(button.IsPressed());
}

TEST_F(RButtonKeyboard, BeingDesignedItIgnoresTheKeyboard) {
    form.SetUserMode(false);
    okay.SetDefault(false);
    button.SetFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_EQ(clicked.count(), 0);
}

}  // namespace
}  // namespace quarv
