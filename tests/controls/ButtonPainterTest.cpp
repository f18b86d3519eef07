#include "controls/ButtonPainter.h"

#include <gtest/gtest.h>

#include "support/FilledPicture.h"
#include "support/TextPrinter.h"

namespace quarv {
namespace {

using test::Face;
using test::FilledPicture;
using test::Highlight;
using test::Shadow;

constexpr quint32 Orange = 0x000080FF;
const QColor OrangeFace(255, 128, 0);
const QColor Latched(246, 244, 236);
const QColor FlatLatched(214, 214, 232);
const QColor Navy(0, 0, 128);

// A red picture of 16 x 16 pixels; on the face of 40 x 30 its corner is at (12, 7).
ButtonLook Look() {
    ButtonLook look;
    look.picture = FilledPicture(Qt::red);
    look.backColor = Orange;
    look.palette = test::ClassicPalette();
    return look;
}

ButtonLook FlatLook() {
    ButtonLook look = Look();
    look.flat = true;
    return look;
}

QImage Painted(const ButtonLook& look, const QSize& size = {40, 30}) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    PaintButton(painter, image.rect(), look);
    return image;
}

void ExpectEdge(const QImage& image, const QColor& leftTop, const QColor& rightBottom,
                const QColor& face) {
    EXPECT_EQ(image.pixelColor(0, 15), leftTop);
    EXPECT_EQ(image.pixelColor(20, 0), leftTop);
    EXPECT_EQ(image.pixelColor(39, 15), rightBottom);
    EXPECT_EQ(image.pixelColor(20, 29), rightBottom);
    EXPECT_EQ(image.pixelColor(1, 1), face);
    EXPECT_EQ(image.pixelColor(38, 28), face);
}

void ExpectPictureAt(const QImage& image, int x, int y, const QColor& color, const QColor& face) {
    EXPECT_EQ(image.pixelColor(x - 1, y), face);
    EXPECT_EQ(image.pixelColor(x, y - 1), face);
    EXPECT_EQ(image.pixelColor(x, y), color);
    EXPECT_EQ(image.pixelColor(x + 15, y + 15), color);
    EXPECT_EQ(image.pixelColor(x + 16, y + 15), face);
}

TEST(ButtonPainter, RestingItIsABackColouredFaceWithACentredPicture) {
    const QImage image = Painted(Look());
    ExpectEdge(image, OrangeFace, OrangeFace, OrangeFace);
    ExpectPictureAt(image, 12, 7, Qt::red, OrangeFace);
}

TEST(ButtonPainter, ClassicHoveredHasARaisedInnerEdge) {
    ButtonLook look = Look();
    look.hovered = true;
    const QImage image = Painted(look);
    ExpectEdge(image, Highlight, Shadow, OrangeFace);
    ExpectPictureAt(image, 12, 7, Qt::red, OrangeFace);
}

TEST(ButtonPainter, ClassicPressedHasASunkenOuterEdgeAndShiftsItsPicture) {
    ButtonLook look = Look();
    look.hovered = true;
    look.pressed = true;
    const QImage image = Painted(look);
    ExpectEdge(image, Shadow, Highlight, OrangeFace);
    ExpectPictureAt(image, 14, 9, Qt::red, OrangeFace);
}

TEST(ButtonPainter, ClassicLatchedIsSunkenOnTheLightenedFace) {
    ButtonLook look = Look();
    look.down = true;
    const QImage image = Painted(look);
    ExpectEdge(image, Shadow, Highlight, Latched);
    ExpectPictureAt(image, 12, 7, Qt::red, Latched);
}

TEST(ButtonPainter, ClassicLatchedAndHoveredStaysSunken) {
    ButtonLook look = Look();
    look.down = true;
    look.hovered = true;
    ExpectEdge(Painted(look), Shadow, Highlight, Latched);
}

TEST(ButtonPainter, FlatRestingHasNoRim) {
    const QImage image = Painted(FlatLook());
    ExpectEdge(image, OrangeFace, OrangeFace, OrangeFace);
    ExpectPictureAt(image, 12, 7, Qt::red, OrangeFace);
}

TEST(ButtonPainter, FlatHoveredIsBlueGreyWithANavyOutline) {
    ButtonLook look = FlatLook();
    look.hovered = true;
    const QImage image = Painted(look);
    ExpectEdge(image, Navy, Navy, QColor(173, 173, 209));
    ExpectPictureAt(image, 12, 7, Qt::red, QColor(173, 173, 209));
}

TEST(ButtonPainter, FlatPressedIsDarkerAndShiftsItsPicture) {
    ButtonLook look = FlatLook();
    look.hovered = true;
    look.pressed = true;
    const QImage image = Painted(look);
    ExpectEdge(image, Navy, Navy, QColor(128, 128, 192));
    ExpectPictureAt(image, 14, 9, Qt::red, QColor(128, 128, 192));
}

TEST(ButtonPainter, FlatLatchedIsSunkenOnItsOwnLightenedFace) {
    ButtonLook look = FlatLook();
    look.down = true;
    ExpectEdge(Painted(look), Shadow, Highlight, FlatLatched);
}

TEST(ButtonPainter, FlatLatchedAndHoveredHasTheOutline) {
    ButtonLook look = FlatLook();
    look.down = true;
    look.hovered = true;
    ExpectEdge(Painted(look), Navy, Navy, FlatLatched);
}

TEST(ButtonPainter, PressedWithoutHoverOnlyShiftsThePicture) {
    ButtonLook look = FlatLook();
    look.pressed = true;
    const QImage image = Painted(look);
    ExpectEdge(image, OrangeFace, OrangeFace, OrangeFace);
    ExpectPictureAt(image, 14, 9, Qt::red, OrangeFace);
}

TEST(ButtonPainter, DisabledIsAGreyedPictureOnTheSystemsFaceInEveryState) {
    for (ButtonLook look : {Look(), FlatLook()}) {
        look.enabled = false;
        look.hovered = true;
        look.pressed = true;
        look.down = true;
        look.focused = true;
        look.picture = FilledPicture(QColor(200, 0, 0));
        const QImage image = Painted(look);
        ExpectEdge(image, Face, Face, Face);
        ExpectPictureAt(image, 12, 7, QColor(152, 150, 142), Face);
    }
}

TEST(ButtonPainter, LatchedItShowsItsOtherPicture) {
    ButtonLook look = Look();
    look.pictureDown = FilledPicture(Qt::blue, {8, 8});
    EXPECT_EQ(Painted(look).pixelColor(20, 15), QColor(Qt::red));
    look.down = true;
    const QImage image = Painted(look);
    EXPECT_EQ(image.pixelColor(16, 11), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(15, 11), Latched);
}

TEST(ButtonPainter, LatchedWithoutAnotherPictureItKeepsTheOne) {
    ButtonLook look = Look();
    look.down = true;
    EXPECT_EQ(Painted(look).pixelColor(20, 15), QColor(Qt::red));
    look.pictureDown = std::make_shared<drawing::Picture>();
    EXPECT_EQ(Painted(look).pixelColor(20, 15), QColor(Qt::red));
    look.enabled = false;
    EXPECT_NE(Painted(look).pixelColor(20, 15), Face);
}

TEST(ButtonPainter, WithoutAPictureNothingIsDrawnLatchedOrNot) {
    ButtonLook look = Look();
    look.picture = nullptr;
    look.pictureDown = FilledPicture(Qt::blue);
    look.hovered = true;
    look.focused = true;
    QImage untouched(40, 30, QImage::Format_RGB32);
    untouched.fill(Qt::magenta);
    EXPECT_EQ(Painted(look), untouched);
    look.down = true;
    EXPECT_EQ(Painted(look), untouched);
    look.picture = std::make_shared<drawing::Picture>();
    look.enabled = false;
    EXPECT_EQ(Painted(look), untouched);
}

TEST(ButtonPainter, APictureLargerThanTheFaceStaysCentred) {
    const QImage image = Painted(Look(), {10, 8});
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(9, 7), QColor(Qt::red));
}

TEST(ButtonPainter, TheFocusMarkFollowsTheFacesBrightness) {
    ButtonLook look = Look();
    look.focused = true;
    const QImage light = Painted(look);
    EXPECT_EQ(light.pixelColor(3, 3), QColor(Qt::black));
    EXPECT_EQ(light.pixelColor(2, 2), OrangeFace);
    look.backColor = 0x00101010;
    EXPECT_EQ(Painted(look).pixelColor(3, 3), QColor(Qt::white));
}

TEST(ButtonPainter, AFaceTooSmallForAFocusMarkHasNone) {
    ButtonLook look = Look();
    look.focused = true;
    look.picture = FilledPicture(OrangeFace, {1, 1});
    const QImage image = Painted(look, {7, 7});
    EXPECT_EQ(image.pixelColor(3, 3), OrangeFace);
}

TEST(ButtonPainter, HalvesRoundToTheEvenNeighbour) {
    EXPECT_EQ(Lightened(QColor(236, 233, 216)), QColor(246, 244, 236));
    EXPECT_EQ(Lightened(QColor(173, 173, 209)), QColor(214, 214, 232));
    EXPECT_EQ(Lightened(QColor(0, 2, 255)), QColor(128, 128, 255));
}

}  // namespace
}  // namespace quarv
