#include "platform/forms/BoxIconPainter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

namespace quarv::forms {
namespace {

const QColor Red(0xc6, 0x2f, 0x2f);
const QColor Blue(0x2f, 0x6f, 0xb3);
const QColor White(Qt::white);
const QColor Ground(Qt::magenta);

QImage Painted(BoxIcon icon, const QSize& size = {32, 32}) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Ground);
    QPainter painter(&image);
    PaintBoxIcon(painter, image.rect(), icon);
    return image;
}

TEST(BoxIconPainter, PaintsASignOnADiscForEachIcon) {
    struct Row {
        BoxIcon icon;
        QColor disc;
        QPoint sign;
        QPoint gap;  // where another icon has its sign
    };
    const Row rows[] = {{BoxIcon::Critical, Red, {16, 16}, {16, 9}},
                        {BoxIcon::Critical, Red, {12, 20}, {16, 23}},
                        {BoxIcon::Information, Blue, {16, 20}, {12, 12}},
                        {BoxIcon::Information, Blue, {16, 8}, {16, 11}},
                        {BoxIcon::Question, Blue, {16, 7}, {16, 12}},
                        {BoxIcon::Question, Blue, {16, 24}, {12, 20}}};
    for (const Row& row : rows) {
        const QImage image = Painted(row.icon);
        EXPECT_EQ(image.pixelColor(row.sign), White);
        EXPECT_EQ(image.pixelColor(row.gap), row.disc);
        EXPECT_EQ(image.pixelColor(16, 3), row.disc);
        EXPECT_EQ(image.pixelColor(0, 0), Ground);
    }
}

TEST(BoxIconPainter, NoIconIsNoPicture) {
    const QImage image = Painted(BoxIcon::None);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) ASSERT_EQ(image.pixelColor(x, y), Ground);
}

TEST(BoxIconPainter, KeepsToTheMiddleOfAnOblong) {
    const QImage image = Painted(BoxIcon::Critical, {96, 32});
    EXPECT_EQ(image.pixelColor(48, 16), White);
    EXPECT_EQ(image.pixelColor(48, 3), Red);
    EXPECT_EQ(image.pixelColor(30, 16), Ground);
    EXPECT_EQ(image.pixelColor(66, 16), Ground);
}

// A picture that was only made larger has squares of equal pixels along the cross.
TEST(BoxIconPainter, IsDrawnAnewAtTwiceTheSize) {
    const QImage image = Painted(BoxIcon::Critical, {64, 64});
    EXPECT_EQ(image.pixelColor(32, 32), White);
    int uneven = 0;
    for (int y = 0; y < 64; y += 2)
        for (int x = 0; x < 64; x += 2)
            if (image.pixel(x, y) != image.pixel(x + 1, y + 1)) ++uneven;
    EXPECT_GT(uneven, 20);
}

}  // namespace
}  // namespace quarv::forms
