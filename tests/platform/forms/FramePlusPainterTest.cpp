#include "platform/forms/FramePlusPainter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

QImage Painted(const FramePlusLook& look, const QFont& font = {}) {
    QImage image(200, 100, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    painter.setFont(font);
    PaintFramePlus(painter, image.rect(), look);
    return image;
}

FramePlusLook LightLook() {
    FramePlusLook look;
    look.palette = QPalette(QColor(240, 240, 240));
    look.palette.setColor(QPalette::Window, QColor(240, 240, 240));
    look.palette.setColor(QPalette::WindowText, QColor(0, 0, 0));
    look.bandHeight = 20;
    return look;
}

TEST(FramePlusPainter, PaintsFaceOutlineAndTitleBand) {
    FramePlusLook look = LightLook();
    look.caption = u"Fields"_qs;
    const QImage image = Painted(look);
    EXPECT_EQ(image.pixelColor(100, 60), QColor(240, 240, 240));
    EXPECT_EQ(image.pixelColor(150, 10), QColor(223, 223, 223));
    EXPECT_EQ(image.pixelColor(0, 60), QColor(180, 180, 180));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::magenta));
}

TEST(FramePlusPainter, LeavesTheBandOutWithoutACaption) {
    const QImage image = Painted(LightLook());
    EXPECT_EQ(image.pixelColor(150, 10), QColor(240, 240, 240));
}

TEST(FramePlusPainter, ATallTitleIsMadeToFitItsBand) {
    FramePlusLook look = LightLook();
    look.caption = u"HHHH"_qs;
    QFont font;
    font.setPixelSize(40);
    const QImage image = Painted(look, font);
    const auto inked = [&image](int y) {
        for (int x = 8; x < 192; ++x)
            if (image.pixelColor(x, y) != QColor(223, 223, 223)) return true;
        return false;
    };
    EXPECT_FALSE(inked(1));
    EXPECT_TRUE(inked(10));
    EXPECT_FALSE(inked(18));
}

TEST(FramePlusPainter, FollowsADarkPalette) {
    FramePlusLook look = LightLook();
    look.palette.setColor(QPalette::Window, QColor(40, 40, 40));
    look.palette.setColor(QPalette::WindowText, QColor(240, 240, 240));
    const QImage image = Painted(look);
    EXPECT_EQ(image.pixelColor(100, 60), QColor(40, 40, 40));
    EXPECT_EQ(image.pixelColor(0, 60), QColor(90, 90, 90));
}

}  // namespace
}  // namespace quarv::forms
