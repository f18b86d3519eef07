#include "platform/drawing/PaintedPictures.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/FilledPicture.h"
#include "support/Raised.h"

namespace quarv::drawing {
namespace {

using test::FilledPicture;

QImage Shown(const PaintedPictures& pictures) {
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(QColor(0xAA, 0x55, 0x33));
    QPainter painter(&image);
    pictures.Paint(painter);
    return image;
}

const QColor Ground(0xAA, 0x55, 0x33);

TEST(PaintedPictures, PaintsAtItsOwnSizeWithoutFurtherArguments) {
    PaintedPictures pictures;
    pictures.Add({.picture = FilledPicture(Qt::red, {8, 6}), .X1 = 150, .Y1 = 75});
    const QImage image = Shown(pictures);
    EXPECT_EQ(image.pixelColor(9, 5), Ground);
    EXPECT_EQ(image.pixelColor(10, 5), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(17, 10), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(18, 10), Ground);
    EXPECT_EQ(image.pixelColor(17, 11), Ground);
}

TEST(PaintedPictures, StretchesToTheGivenSize) {
    PaintedPictures pictures;
    pictures.Add({.picture = FilledPicture(Qt::red, {8, 8}), .Width1 = 240, .Height1 = 30});
    const QImage image = Shown(pictures);
    EXPECT_EQ(image.pixelColor(15, 1), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(16, 1), Ground);
    EXPECT_EQ(image.pixelColor(15, 2), Ground);
}

TEST(PaintedPictures, APartKeepsItsSizeWhereNoneIsGiven) {
    QImage halves = test::FilledImage(Qt::red, {8, 8});
    for (int y = 0; y < 8; ++y)
        for (int x = 4; x < 8; ++x) halves.setPixelColor(x, y, Qt::blue);
    PaintedPictures pictures;
    pictures.Add({.picture = std::make_shared<Picture>(halves),
                  .X2 = 60,
                  .Y2 = 0,
                  .Width2 = 30,
                  .Height2 = 45});
    const QImage image = Shown(pictures);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(1, 2), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(2, 2), Ground);
    EXPECT_EQ(image.pixelColor(1, 3), Ground);
}

TEST(PaintedPictures, ANegativeSizeMirrors) {
    QImage halves = test::FilledImage(Qt::red, {4, 4});
    for (int y = 0; y < 4; ++y) halves.setPixelColor(3, y, Qt::blue);
    PaintedPictures pictures;
    pictures.Add({.picture = std::make_shared<Picture>(halves), .X1 = 60, .Width1 = -60});
    const QImage image = Shown(pictures);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(3, 0), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(4, 0), Ground);
}

TEST(PaintedPictures, ABitmapIsCombinedByItsCode) {
    PaintedPictures pictures;
    pictures.Add({.picture = FilledPicture(QColor(0xF0, 0xCC, 0x00)), .Opcode = 0x00660046});
    const QImage image = Shown(pictures);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(0x5A, 0x99, 0x33));
    EXPECT_EQ(image.pixelColor(16, 0), Ground);
}

TEST(PaintedPictures, TransparencyPlaysNoPartInACombination) {
    PaintedPictures pictures;
    pictures.Add({.picture = FilledPicture(QColor(0xF0, 0xCC, 0x00, 0)), .Opcode = 0x00660046});
    EXPECT_EQ(Shown(pictures).pixelColor(0, 0), QColor(0x5A, 0x99, 0x33));
}

TEST(PaintedPictures, ACopyLetsTransparentPartsStand) {
    PaintedPictures pictures;
    pictures.Add({.picture = FilledPicture(QColor(0xFF, 0xFF, 0xFF, 0))});
    EXPECT_EQ(Shown(pictures).pixelColor(0, 0), Ground);
}

TEST(PaintedPictures, TheCodeIsForBitmapsOnly) {
    QPixmap pixmap(8, 8);
    pixmap.fill(Qt::green);
    const auto icon = std::make_shared<Picture>(QIcon(pixmap), QSize(8, 8));
    PaintedPictures pictures;
    pictures.Add({.picture = icon, .Opcode = 0x00330008});
    EXPECT_EQ(Shown(pictures).pixelColor(4, 4), QColor(Qt::green));
    EXPECT_EQ(Raised([&] { pictures.Add({.picture = icon, .Opcode = 1}); }), 5);
}

TEST(PaintedPictures, LaterOnesLieAboveEarlierOnes) {
    PaintedPictures pictures;
    pictures.Add({.picture = FilledPicture(Qt::red)});
    pictures.Add({.picture = FilledPicture(Qt::blue, {4, 4})});
    pictures.Add({.picture = FilledPicture(QColor(0, 255, 0, 255), {2, 2}), .X1 = 15});
    const QImage image = Shown(pictures);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(1, 0), QColor(0, 255, 0));
    EXPECT_EQ(image.pixelColor(4, 4), QColor(Qt::red));
}

TEST(PaintedPictures, WhatIsCoveredIsForgotten) {
    PaintedPictures pictures;
    std::weak_ptr<Picture> covered;
    {
        const PictureRef small = FilledPicture(Qt::red, {4, 4});
        covered = small;
        pictures.Add({.picture = small, .X1 = 15, .Y1 = 15});
    }
    pictures.Add({.picture = FilledPicture(QColor(0, 0, 0, 0))});
    EXPECT_FALSE(covered.expired());
    pictures.Add({.picture = FilledPicture(Qt::blue), .Opcode = 0x008800C6});
    EXPECT_FALSE(covered.expired());
    pictures.Add({.picture = FilledPicture(Qt::blue)});
    EXPECT_TRUE(covered.expired());
}

TEST(PaintedPictures, NothingIsLeftAfterClearing) {
    PaintedPictures pictures;
    pictures.Add({.picture = FilledPicture(Qt::red)});
    pictures.Clear();
    EXPECT_EQ(Shown(pictures).pixelColor(0, 0), Ground);
}

TEST(PaintedPictures, RefusesWhatCannotBePainted) {
    PaintedPictures pictures;
    const PictureRef red = FilledPicture(Qt::red);
    const float nowhere = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(Raised([&] { pictures.Add({}); }), 91);
    EXPECT_EQ(Raised([&] { pictures.Add({.picture = std::make_shared<Picture>()}); }), 91);
    EXPECT_EQ(Raised([&] { pictures.Add({.picture = red, .X1 = nowhere}); }), 5);
    EXPECT_EQ(Raised([&] { pictures.Add({.picture = red, .Width2 = 0}); }), 5);
    EXPECT_EQ(Raised([&] { pictures.Add({.picture = red, .Height2 = -15}); }), 5);
    EXPECT_EQ(Raised([&] { pictures.Add({.picture = red, .Opcode = 0x00CC0021}); }), 5);
    EXPECT_EQ(Raised([&] { pictures.Add({.picture = red, .Width1 = u"wide"}); }), 13);
    EXPECT_EQ(Raised([&] { pictures.Add({.picture = red, .Width1 = Value::Null()}); }), 94);
    EXPECT_EQ(Shown(pictures).pixelColor(0, 0), Ground);
}

}  // namespace
}  // namespace quarv::drawing
