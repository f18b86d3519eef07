#include "controls/RButton.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <memory>

#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "platform/forms/PictureBox.h"
#include "platform/forms/TextBox.h"
#include "support/FilledPicture.h"
#include "support/TextPrinter.h"

namespace quarv {
namespace {

const QPoint Middle(30, 25);  // of the button, on the form
const QPoint Outside(120, 80);
const QColor OrangeFace(255, 128, 0);

// A button of 40 x 30 pixels at (10, 10), moved over and clicked through the form's window.
class RButtonTest : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    std::unique_ptr<RButton> owned = std::make_unique<RButton>(&form, u"Run"_qs);
    RButton& button = *owned;
    QSignalSpy clicked{&button, &RButton::Click};

    void SetUp() override {
        form.SetWidth(3000);
        form.SetHeight(1500);
        button.Move(150, 150, 600, 450);
        button.setPalette(test::ClassicPalette());
        button.SetBackColor(0x000080FF);
        button.SetPicture(test::FilledPicture(Qt::red));
        form.Show();
        QApplication::setActiveWindow(&form);
        // The mouse stays where an earlier test left it, and a move to where it is is none.
        MoveTo(Outside);
    }

    void MoveTo(const QPoint& place) { QTest::mouseMove(form.windowHandle(), place); }
    void Press(const QPoint& place, Qt::MouseButton mouse = Qt::LeftButton) {
        QTest::mousePress(form.windowHandle(), mouse, {}, place);
    }
    void Release(const QPoint& place, Qt::MouseButton mouse = Qt::LeftButton) {
        QTest::mouseRelease(form.windowHandle(), mouse, {}, place);
    }

    QColor Pixel(int x, int y) { return button.grab().toImage().pixelColor(x, y); }
    bool ShowsRest() { return Pixel(0, 0) == OrangeFace && Pixel(12, 7) == QColor(Qt::red); }
    bool ShowsHover() { return Pixel(0, 0) == test::Highlight && Pixel(12, 7) == QColor(Qt::red); }
    bool ShowsPressed() {
        return Pixel(0, 0) == test::Shadow && Pixel(13, 8) == OrangeFace &&
               Pixel(14, 9) == QColor(Qt::red);
    }
};

TEST_F(RButtonTest, ShowsHoverWhileTheMouseIsOverIt) {
    EXPECT_TRUE(ShowsRest());
    MoveTo(Middle);
    EXPECT_TRUE(ShowsHover());
    MoveTo(Middle + QPoint(3, 0));
    EXPECT_TRUE(ShowsHover());
    MoveTo(Outside);
    EXPECT_TRUE(ShowsRest());
}

TEST_F(RButtonTest, ClicksWhenReleasedAndStaysHovered) {
    MoveTo(Middle);
    Press(Middle);
    EXPECT_TRUE(ShowsPressed());
    EXPECT_EQ(clicked.count(), 0);
    Release(Middle);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(Pixel(0, 0), test::Highlight);
    MoveTo(Outside);
    EXPECT_EQ(Pixel(0, 0), OrangeFace);
}

TEST_F(RButtonTest, TheFaceIsNormalWhileTheClickIsHandled) {
    QColor during;
    QObject::connect(&button, &RButton::Click, &button, [&] { during = Pixel(0, 0); });
    MoveTo(Middle);
    Press(Middle);
    Release(Middle);
    EXPECT_EQ(during, test::Highlight);
}

TEST_F(RButtonTest, ReleasedOutsideItDoesNotClickAndReturnsToNormal) {
    MoveTo(Middle);
    Press(Middle);
    MoveTo(Outside);
    Release(Outside);
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_FALSE(button.IsPressed());
    EXPECT_EQ(Pixel(0, 0), OrangeFace);
    EXPECT_EQ(Pixel(12, 7), QColor(Qt::red));
}

TEST_F(RButtonTest, ReleasedOnItsFarEdgeItClicks) {
    Press(Middle);
    Release(QPoint(10 + 40, 10 + 30));
    EXPECT_EQ(clicked.count(), 1);
    Press(Middle);
    Release(QPoint(10 + 41, 10 + 30));
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(RButtonTest, OtherMouseButtonsDoNothing) {
    MoveTo(Middle);
    for (const auto mouse : {Qt::RightButton, Qt::MiddleButton}) {
        Press(Middle, mouse);
        EXPECT_FALSE(button.IsPressed());
        EXPECT_TRUE(ShowsHover());
        Release(Middle, mouse);
    }
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(RButtonTest, ARightReleaseDoesNotEndALeftPress) {
    Press(Middle);
    Press(Middle, Qt::RightButton);
    Release(Middle, Qt::RightButton);
    EXPECT_TRUE(button.IsPressed());
    EXPECT_EQ(clicked.count(), 0);
    Release(Middle);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(RButtonTest, TwoQuickClicksAreTwo) {
    Press(Middle);
    Release(Middle);
    QTest::mouseDClick(form.windowHandle(), Qt::LeftButton, {}, Middle);
    EXPECT_GE(clicked.count(), 2);
    EXPECT_FALSE(button.IsPressed());
}

TEST_F(RButtonTest, AHandlerMayMoveTheFocus) {
    forms::TextBox box(&form, u"T"_qs);
    box.Move(1200, 150, 900, 300);
    box.show();
    QObject::connect(&button, &RButton::Click, &box, [&box] { box.SetFocus(); });
    MoveTo(Middle);
    Press(Middle);
    Release(Middle);
    EXPECT_FALSE(button.hasFocus());
    EXPECT_NE(Pixel(3, 3), QColor(Qt::black));
}

TEST_F(RButtonTest, AHandlerMayDeleteTheButton) {
    bool handled = false;
    QObject::connect(&button, &RButton::Click, &form, [&] {
        handled = true;
        owned.reset();
    });
    Press(Middle);
    Release(Middle);
    EXPECT_TRUE(handled);
}

TEST_F(RButtonTest, AFailingHandlerEndsItsEventOnly) {
    QObject::connect(&button, &RButton::Click, &form,
                     [] { throw RuntimeError(RuntimeError::Overflow); });
    Press(Middle);
    testing::internal::CaptureStderr();
    Release(Middle);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("6: "), std::string::npos);
    EXPECT_FALSE(button.IsPressed());
}

TEST_F(RButtonTest, DisabledItNeitherClicksNorShowsTheMouse) {
    button.SetEnabled(false);
    MoveTo(Middle);
    Press(Middle);
    EXPECT_EQ(Pixel(0, 0), test::Face);
    EXPECT_EQ(Pixel(39, 29), test::Face);
    Release(Middle);
    button.Press();
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(RButtonTest, DisabledWhilePressedItComesBackReleased) {
    MoveTo(Middle);
    Press(Middle);
    button.SetEnabled(false);
    Release(Middle);
    MoveTo(Outside);
    button.SetEnabled(true);
    EXPECT_TRUE(ShowsRest());
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(RButtonTest, HiddenWhilePressedItComesBackNormal) {
    MoveTo(Middle);
    Press(Middle);
    button.SetVisible(false);
    Release(Middle);
    MoveTo(Outside);
    button.SetVisible(true);
    EXPECT_TRUE(ShowsRest());
}

TEST_F(RButtonTest, BeingDesignedItIgnoresTheMouseAndLooksHovered) {
    form.SetUserMode(false);
    EXPECT_TRUE(ShowsHover());
    MoveTo(Middle);
    Press(Middle);
    EXPECT_TRUE(ShowsHover());
    EXPECT_FALSE(button.IsPressed());
    Release(Middle);
    button.Press();
    EXPECT_EQ(clicked.count(), 0);
    MoveTo(Outside);
    EXPECT_TRUE(ShowsHover());
}

TEST_F(RButtonTest, WithoutAPictureOnlyTheBackColourShows) {
    button.SetPicture(nullptr);
    button.SetPictureDown(test::FilledPicture(Qt::blue));
    button.SetDown(true);
    MoveTo(Middle);
    QImage plain(40, 30, QImage::Format_RGB32);
    plain.fill(OrangeFace);
    EXPECT_EQ(button.grab().toImage().convertToFormat(QImage::Format_RGB32), plain);
}

TEST_F(RButtonTest, TheFaceFollowsItsSize) {
    MoveTo(Middle);
    button.SetWidth(900);
    EXPECT_EQ(Pixel(59, 15), test::Shadow);
    EXPECT_EQ(Pixel(22, 7), QColor(Qt::red));
}

TEST_F(RButtonTest, ReadingColoursOfAPictureBoxHasNoEffect) {
    forms::PictureBox box(&form, u"P"_qs);
    box.SetPicture(QIcon(QPixmap::fromImage(test::FilledImage(Qt::green, {16, 16}))));
    for (const double side : {300.0, 45.0, 0.0}) {
        box.Move(0, 0, side, side);
        const QImage before = form.grab().toImage();
        button.ShowCol(box);
        EXPECT_EQ(form.grab().toImage(), before);
    }
}

}  // namespace
}  // namespace quarv
