#include "controls/CheckPainter.h"

#include <gtest/gtest.h>

#include "support/FilledPicture.h"
#include "support/Raised.h"

namespace quarv {
namespace {

const QColor Ground(Qt::magenta);

QImage Painted(const CheckLook& look, const QPointF& corner = {}, const CheckMetrics& metrics = {},
               qreal scale = 1) {
    QImage image(QSize(120, 40) * scale, QImage::Format_RGB32);
    image.fill(Ground);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    PaintCheck(painter, corner, metrics, look);
    return image;
}

// The columns and rows that differ from the ground, from first to last.
QRect Inked(const QImage& image) {
    QRect inked;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) != Ground) inked |= QRect(x, y, 1, 1);
    return inked;
}

// Where two images differ.
QRect Changed(const QImage& a, const QImage& b) {
    QRect changed;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y)) changed |= QRect(x, y, 1, 1);
    return changed;
}

TEST(CheckPainter, TheBoxIsOnePixelIn) {
    EXPECT_EQ(Inked(Painted({})), QRect(1, 1, 13, 13));
}

TEST(CheckPainter, TheTickLiesFourPixelsInAndInsideTheBox) {
    const QRect tick = Changed(Painted({}), Painted({.checked = true}));
    EXPECT_FALSE(tick.isEmpty());
    EXPECT_TRUE(QRect(4, 4, 7, 7).contains(tick));
    EXPECT_GE(tick.width(), 6);
}

TEST(CheckPainter, UncheckedOnlyTheBoxIsDrawn) {
    const QImage image = Painted({.checked = false});
    for (int x = 2; x <= 12; ++x) EXPECT_EQ(image.pixelColor(x, 7), image.pixelColor(2, 2));
}

TEST(CheckPainter, PressedTheBoxIsAnotherPicture) {
    const QRect changed = Changed(Painted({}), Painted({.pressed = true}));
    EXPECT_EQ(changed, QRect(2, 2, 11, 11));
    EXPECT_EQ(
        Changed(Painted({.pressed = true}), Painted({.pressed = true, .checked = true})).isEmpty(),
        false);
}

TEST(CheckPainter, EverythingMovesWithTheCornerInTwips) {
    EXPECT_EQ(Inked(Painted({}, {150, 75})), QRect(11, 6, 13, 13));
    const QRect tick = Changed(Painted({}, {150, 75}), Painted({.checked = true}, {150, 75}));
    EXPECT_TRUE(QRect(14, 9, 7, 7).contains(tick));
}

TEST(CheckPainter, TheCaptionStartsSixtyTwipsRightOfTheBoxPicturesWidth) {
    const QImage plain = Painted({});
    const QImage captioned = Painted({.caption = u"HH"_qs});
    const QRect text = Changed(plain, captioned);
    EXPECT_GE(text.left(), 17);
    EXPECT_LE(text.left(), 19);
    EXPECT_LT(text.top(), 8);
    const QRect moved = Changed(Painted({}, {150, 75}), Painted({.caption = u"HH"_qs}, {150, 75}));
    EXPECT_EQ(moved, text.translated(10, 5));
}

TEST(CheckPainter, AnEmptyCaptionPrintsNothing) {
    EXPECT_EQ(Painted({.caption = u""_qs}), Painted({}));
}

TEST(CheckPainter, TheCaptionIsLiteral) {
    EXPECT_NE(Painted({.caption = u"a&b"_qs}), Painted({.caption = u"ab"_qs}));
}

TEST(CheckPainter, TheCaptionTakesThePaintersPen) {
    QImage image(120, 40, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setPen(QColor(0, 255, 0));
    PaintCheck(painter, {}, {}, {.caption = u"HHHH"_qs});
    painter.end();
    int green = 0;
    for (int x = 17; x < 120; ++x) green = std::max(green, image.pixelColor(x, 8).green());
    EXPECT_GT(green, 150);
}

TEST(CheckPainter, DisabledItFades) {
    const QImage image = Painted({.checked = true, .enabled = false});
    EXPECT_NE(image.pixelColor(1, 7), Painted({.checked = true}).pixelColor(1, 7));
    EXPECT_EQ(Inked(image), QRect(1, 1, 13, 13));
}

TEST(CheckPainter, FourPixelsBeyondSixteenBitsOverflow) {
    const CheckMetrics wide{.twipsPerPixelX = 8192, .twipsPerPixelY = 15};
    const CheckMetrics tall{.twipsPerPixelX = 15, .twipsPerPixelY = 8192};
    const CheckMetrics fits{.twipsPerPixelX = 8191, .twipsPerPixelY = 8191};
    EXPECT_EQ(Raised([&] { Painted({.checked = true}, {}, wide); }), 6);
    EXPECT_EQ(Raised([&] { Painted({.checked = true}, {}, tall); }), 6);
    EXPECT_EQ(Raised([&] { Painted({.checked = true}, {}, fits); }), 0);
    EXPECT_EQ(Raised([&] { Painted({}, {}, wide); }), 0);
}

TEST(CheckPainter, TheBoxIsCrispAtTwiceTheScale) {
    const QImage image = Painted({}, {}, {}, 2);
    EXPECT_EQ(Inked(image), QRect(2, 2, 26, 26));
    EXPECT_EQ(image.pixelColor(2, 14), image.pixelColor(3, 14));
    EXPECT_EQ(image.pixelColor(4, 14), image.pixelColor(14, 14));
}

}  // namespace
}  // namespace quarv
