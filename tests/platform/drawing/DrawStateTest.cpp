#include "platform/drawing/DrawState.h"

#include <gtest/gtest.h>

#include "support/FilledPicture.h"
#include "support/Raised.h"

namespace quarv::drawing {
namespace {

using test::FilledPicture;

QImage Drawn(const Picture& picture, unsigned flags, const QPalette& palette, qreal scale = 1) {
    QImage image(QSize(20, 20) * scale, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    DrawState(painter, picture, QRect(QPoint(2, 2), picture.Size().toSize()), flags, palette);
    return image;
}

QPalette WithFace(const QColor& face) {
    QPalette palette;
    palette.setColor(QPalette::Button, face);
    return palette;
}

Picture RedIcon() {
    QPixmap pixmap(8, 8);
    pixmap.fill(Qt::transparent);
    QPainter(&pixmap).fillRect(0, 0, 4, 8, Qt::red);
    return Picture(QIcon(pixmap), QSize(8, 8));
}

TEST(DrawState, KnowsTheImageTypeOfAPicture) {
    EXPECT_EQ(ImageTypeOf(*FilledPicture(Qt::red)), 4U);
    EXPECT_EQ(ImageTypeOf(RedIcon()), 3U);
    EXPECT_EQ(ImageTypeOf(Picture()), 0U);
}

TEST(DrawState, NormalLeavesThePictureAsItIs) {
    const QImage image =
        Drawn(*FilledPicture(Qt::red, {8, 8}), DST_BITMAP | unsigned{DSS_NORMAL}, QPalette());
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(9, 9), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(10, 9), QColor(Qt::white));
}

TEST(DrawState, DisabledFadesHalfIntoTheFaceWithoutHues) {
    const Picture picture(*FilledPicture(QColor(200, 0, 0), {8, 8}));
    const QImage light =
        Drawn(picture, DST_BITMAP | unsigned{DSS_DISABLED}, WithFace(QColor(236, 233, 216)));
    EXPECT_EQ(light.pixelColor(2, 2), QColor(152, 150, 142));
    EXPECT_EQ(light.pixelColor(9, 9), QColor(152, 150, 142));
    EXPECT_EQ(light.pixelColor(10, 9), QColor(Qt::white));
    const QImage dark =
        Drawn(picture, DST_BITMAP | unsigned{DSS_DISABLED}, WithFace(QColor(40, 40, 40)));
    EXPECT_EQ(dark.pixelColor(5, 5), QColor(54, 54, 54));
}

TEST(DrawState, ADisabledIconStaysTransparentWhereItWas) {
    const QImage image =
        Drawn(RedIcon(), DST_ICON | unsigned{DSS_DISABLED}, WithFace(QColor(100, 100, 100)));
    EXPECT_EQ(image.pixelColor(2, 2), QColor(93, 93, 93));
    EXPECT_EQ(image.pixelColor(5, 9), QColor(93, 93, 93));
    EXPECT_EQ(image.pixelColor(6, 9), QColor(Qt::white));
}

TEST(DrawState, AComplexImageDrawsItselfBeforeItIsGreyed) {
    QPicture drawing;
    QPainter(&drawing).fillRect(QRect(0, 0, 4, 4), Qt::black);
    const QImage image = Drawn(Picture(drawing, QSize(6, 6)), DST_COMPLEX | unsigned{DSS_DISABLED},
                               WithFace(QColor(100, 100, 100)));
    EXPECT_EQ(image.pixelColor(5, 5), QColor(50, 50, 50));
    EXPECT_EQ(image.pixelColor(6, 6), QColor(Qt::white));
}

TEST(DrawState, DisabledIsCrispAtTwiceTheScale) {
    const QImage image =
        Drawn(RedIcon(), DST_ICON | unsigned{DSS_DISABLED}, WithFace(QColor(100, 100, 100)), 2);
    EXPECT_EQ(image.pixelColor(11, 5), QColor(93, 93, 93));
    EXPECT_EQ(image.pixelColor(12, 5), QColor(Qt::white));
}

TEST(DrawState, AnEmptyPictureDrawsNothing) {
    const QImage image = Drawn(Picture(), DST_COMPLEX | unsigned{DSS_DISABLED}, QPalette());
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::white));
}

TEST(DrawState, RefusesAnotherImageTypeAndUnknownStates) {
    const Picture icon = RedIcon();
    EXPECT_EQ(Raised([&] { Drawn(icon, DST_BITMAP, QPalette()); }), 5);
    EXPECT_EQ(Raised([&] { Drawn(icon, DST_ICON | 0x10U, QPalette()); }), 5);
}

}  // namespace
}  // namespace quarv::drawing
