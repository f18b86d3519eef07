#include "controls/RCheckbox.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include "base/LateBinding.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/Form.h"
#include "support/FilledPicture.h"
#include "support/Raised.h"

namespace quarv {
namespace {

using test::FilledPicture;

class RCheckboxTest : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    RCheckbox box{&form, u"Check"_qs};

    void SetUp() override {
        box.Move(150, 150, 1500, 300);
        box.SetBackColor(0x00FF00FF);
        form.Show();
        QApplication::setActiveWindow(&form);
        box.clearFocus();
    }

    QImage Shown() { return box.grab().toImage(); }
    QColor Pixel(int x, int y) { return Shown().pixelColor(x, y); }
    void PaintRed() { box.PaintPicture(FilledPicture(Qt::red, {10, 10}), 600, 75); }
};

TEST_F(RCheckboxTest, AClickToggles) {
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_TRUE(box.Checked());
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(90, 15));
    EXPECT_FALSE(box.Checked());
}

TEST_F(RCheckboxTest, OnlyAWholeLeftClickCounts) {
    QTest::mouseClick(&box, Qt::RightButton, {}, QPoint(5, 5));
    QTest::mousePress(&box, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_FALSE(box.Checked());
    QTest::mouseRelease(&box, Qt::LeftButton, {}, QPoint(5, 50));
    EXPECT_FALSE(box.Checked());
}

TEST_F(RCheckboxTest, SpaceAndCapitalYAndNAct) {
    box.SetFocus();
    QTest::keyClicks(&box, u"YY"_qs);
    EXPECT_TRUE(box.Checked());
    QTest::keyClicks(&box, u" "_qs);
    EXPECT_FALSE(box.Checked());
    QTest::keyClicks(&box, u" "_qs);
    EXPECT_TRUE(box.Checked());
    QTest::keyClicks(&box, u"N"_qs);
    EXPECT_FALSE(box.Checked());
    QTest::keyClicks(&box, u"N"_qs);
    EXPECT_FALSE(box.Checked());
}

TEST_F(RCheckboxTest, SmallLettersChangeNothing) {
    QTest::keyClicks(&box, u"y"_qs);
    EXPECT_FALSE(box.Checked());
    box.SetChecked(true);
    QTest::keyClicks(&box, u"n"_qs);
    EXPECT_TRUE(box.Checked());
}

TEST_F(RCheckboxTest, AKeyHeldDownTogglesOnce) {
    QTest::keyPress(&box, Qt::Key_Space);
    for (int i = 0; i < 2; ++i) {
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Space, {}, u" "_qs, true);
        QApplication::sendEvent(&box, &again);
    }
    EXPECT_TRUE(box.Checked());
}

TEST_F(RCheckboxTest, CommandsAreNoCharacters) {
    QKeyEvent shortcut(QEvent::KeyPress, Qt::Key_Y, Qt::AltModifier | Qt::ShiftModifier, u"Y"_qs);
    QApplication::sendEvent(&box, &shortcut);
    EXPECT_FALSE(box.Checked());
    EXPECT_FALSE(shortcut.isAccepted());
}

TEST_F(RCheckboxTest, EnterReachesTheDefaultButton) {
    forms::ButtonPlus okay(&form, u"Okay"_qs);
    okay.SetDefault(true);
    okay.show();
    QSignalSpy clicked(&okay, &forms::ButtonPlus::Click);
    box.SetFocus();
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_FALSE(box.Checked());
}

TEST_F(RCheckboxTest, DisabledOrBeingDesignedTheUserCannotChangeIt) {
    box.SetEnabled(false);
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_FALSE(box.Checked());
    box.SetEnabled(true);
    form.SetUserMode(false);
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(5, 5));
    QTest::keyClicks(&box, u"Y"_qs);
    EXPECT_FALSE(box.Checked());
}

TEST_F(RCheckboxTest, DrawsBoxTickAndCaptionOnItsBackground) {
    const QColor ground(255, 0, 255);
    EXPECT_EQ(Pixel(0, 0), ground);
    EXPECT_NE(Pixel(1, 1), ground);
    EXPECT_NE(Pixel(13, 13), ground);
    EXPECT_EQ(Pixel(14, 14), ground);
    const QImage empty = Shown();
    box.SetChecked(true);
    const QImage checked = Shown();
    EXPECT_NE(checked, empty);
    EXPECT_EQ(checked.copy(14, 0, 86, 20), empty.copy(14, 0, 86, 20));
    box.SetCaption(u"HH"_qs);
    EXPECT_EQ(Shown().copy(0, 0, 17, 20), checked.copy(0, 0, 17, 20));
    EXPECT_NE(Shown(), checked);
}

TEST_F(RCheckboxTest, TheFocusIsMarkedAroundTheBox) {
    const QImage without = Shown();
    box.SetFocus();
    const QColor mark = box.palette().color(QPalette::Highlight);
    EXPECT_EQ(Pixel(0, 0), mark);
    EXPECT_EQ(Pixel(14, 14), mark);
    EXPECT_EQ(Shown().copy(1, 1, 13, 13), without.copy(1, 1, 13, 13));
}

TEST_F(RCheckboxTest, APaintedPictureStaysUntilItIsRedrawn) {
    PaintRed();
    EXPECT_EQ(Pixel(40, 5), QColor(Qt::red));
    EXPECT_EQ(Pixel(49, 14), QColor(Qt::red));
    EXPECT_EQ(Pixel(50, 14), QColor(255, 0, 255));
    box.SetFocus();
    EXPECT_EQ(Pixel(40, 5), QColor(Qt::red));
    box.Redraw();
    EXPECT_EQ(Pixel(40, 5), QColor(255, 0, 255));
}

TEST_F(RCheckboxTest, EveryWriterAndAResizeRedraw) {
    const std::function<void()> actions[] = {
        [this] { box.SetChecked(false); },          [this] { box.SetCaption(u""_qs); },
        [this] { box.SetEnabled(true); },           [this] { box.SetBackColor(0x00FF00FF); },
        [this] { box.SetWidth(box.Width() + 15); },
    };
    for (const auto& act : actions) {
        PaintRed();
        EXPECT_EQ(Pixel(40, 5), QColor(Qt::red));
        act();
        EXPECT_EQ(Pixel(40, 5), QColor(255, 0, 255));
    }
}

TEST_F(RCheckboxTest, PaintPicturePassesAllItsArguments) {
    QImage halves = test::FilledImage(QColor(0x0F, 0x0F, 0x0F), {4, 4});
    for (int y = 0; y < 4; ++y)
        for (int x = 2; x < 4; ++x) halves.setPixelColor(x, y, QColor(0xF0, 0xF0, 0xF0));
    const auto picture = std::make_shared<drawing::Picture>(halves);
    box.PaintPicture(picture, 600, 75, 120, 60, 30, 15, 30, 30, 0x00660046);
    EXPECT_EQ(Pixel(40, 5), QColor(0x0F, 0xF0, 0x0F));
    EXPECT_EQ(Pixel(47, 8), QColor(0x0F, 0xF0, 0x0F));
    EXPECT_EQ(Pixel(48, 8), QColor(255, 0, 255));
    EXPECT_EQ(Pixel(47, 9), QColor(255, 0, 255));
}

TEST_F(RCheckboxTest, PaintPictureIsReachedByNameAndRefusesOtherObjects) {
    CallByName(&box, u"PaintPicture"_qs,
               {Value(FilledPicture(Qt::red)), Value(600), Value(0), Value(15)});
    EXPECT_EQ(Pixel(40, 15), QColor(Qt::red));
    EXPECT_EQ(Pixel(41, 15), QColor(255, 0, 255));
    EXPECT_EQ(Raised([&] { box.PaintPicture(Borrow(&box), 0, 0); }), 13);
    EXPECT_EQ(Raised([&] { box.PaintPicture(nullptr, 0, 0); }), 91);
    EXPECT_EQ(
        Raised([&] { box.PaintPicture(FilledPicture(Qt::red), 0, 0, {}, {}, {}, {}, {}, {}, 3); }),
        5);
}

class DrawExTest : public RCheckboxTest {
  protected:
    QImage Drawn(bool pressed, bool checked, double x, double y, int meaningless = 0) {
        QImage image(100, 40, QImage::Format_RGB32);
        image.fill(Qt::green);
        QPainter painter(&image);
        box.DrawEx(pressed, checked, meaningless, -meaningless, x, y, painter);
        return image;
    }
};

TEST_F(DrawExTest, DrawsTheBoxAtItsPlaceOnTheTargetWithoutClearing) {
    const QImage image = Drawn(false, false, 300, 150);
    EXPECT_EQ(image.pixelColor(20, 10), QColor(Qt::green));
    EXPECT_NE(image.pixelColor(21, 11), QColor(Qt::green));
    EXPECT_NE(image.pixelColor(33, 23), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(34, 24), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(27, 17), image.pixelColor(22, 12));
}

TEST_F(DrawExTest, TakesItsArgumentsNotTheControlsState) {
    const QImage plain = Drawn(false, false, 0, 0);
    const QImage checked = Drawn(false, true, 0, 0);
    EXPECT_NE(checked, plain);
    EXPECT_NE(Drawn(true, false, 0, 0), plain);
    box.SetChecked(true);
    EXPECT_EQ(Drawn(false, false, 0, 0), plain);
    EXPECT_EQ(Drawn(false, true, 0, 0), checked);
}

TEST_F(DrawExTest, PrintsTheCaptionAndIgnoresTheTwoNumbers) {
    const QImage plain = Drawn(false, false, 0, 0);
    EXPECT_EQ(Drawn(false, false, 0, 0, 7), plain);
    box.SetCaption(u"HH"_qs);
    const QImage captioned = Drawn(false, false, 0, 0);
    EXPECT_NE(captioned, plain);
    EXPECT_EQ(captioned.copy(0, 0, 17, 40), plain.copy(0, 0, 17, 40));
}

}  // namespace
}  // namespace quarv
