#include "platform/drawing/Picture.h"

#include <gtest/gtest.h>

#include "support/FilledPicture.h"
#include "support/Raised.h"

namespace quarv::drawing {
namespace {

using test::FilledImage;
using test::FilledPicture;

QImage Ground(const QSize& size, qreal scale = 1) {
    QImage image(size * scale, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDevicePixelRatio(scale);
    return image;
}

// Red on the left, blue on the right, four pixels each.
Picture TwoColors() {
    QImage image = FilledImage(Qt::red, {8, 4});
    for (int y = 0; y < 4; ++y)
        for (int x = 4; x < 8; ++x) image.setPixelColor(x, y, Qt::blue);
    return Picture(image);
}

QIcon GreenIcon() {
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::green);
    return QIcon(pixmap);
}

QPicture BlackDrawing() {
    QPicture drawing;
    QPainter painter(&drawing);
    painter.fillRect(QRect(0, 0, 5, 5), Qt::black);
    return drawing;
}

TEST(Picture, IsEmptyWithoutASource) {
    for (const Picture& picture :
         {Picture(), Picture(QImage()), Picture(QPixmap()), Picture(QIcon(), QSize(16, 16)),
          Picture(GreenIcon(), QSize()), Picture(QPicture(), QSize(5, 5))}) {
        EXPECT_EQ(picture.Type(), PictureType::None);
        EXPECT_EQ(picture.Width(), 0);
        EXPECT_EQ(picture.Height(), 0);
    }
}

TEST(Picture, KnowsItsKind) {
    EXPECT_EQ(FilledPicture(Qt::red)->Type(), PictureType::Bitmap);
    EXPECT_EQ(Picture(GreenIcon(), QSize(16, 16)).Type(), PictureType::Icon);
    EXPECT_EQ(Picture(BlackDrawing(), QSize(5, 5)).Type(), PictureType::Other);
}

TEST(Picture, MeasuresTwips) {
    const PictureRef picture = FilledPicture(Qt::red, {20, 10});
    EXPECT_EQ(picture->Width(), 300);
    EXPECT_EQ(picture->Height(), 150);
    QImage dense = FilledImage(Qt::red, {20, 10});
    dense.setDevicePixelRatio(2);
    EXPECT_EQ(Picture(dense).Width(), 150);
    EXPECT_EQ(Picture(GreenIcon(), QSize(13, 12)).Height(), 180);
}

TEST(Picture, PaintsItselfAtItsOwnSize) {
    QImage image = Ground({20, 20});
    QPainter painter(&image);
    FilledPicture(Qt::red, {8, 8})->Paint(painter, QPointF(4, 5));
    painter.end();
    EXPECT_EQ(image.pixelColor(3, 5), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(4, 5), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(11, 12), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(12, 12), QColor(Qt::white));
}

TEST(Picture, IconsAndDrawingsPaintThemselvesToo) {
    QImage image = Ground({40, 20});
    QPainter painter(&image);
    Picture(GreenIcon(), QSize(16, 16)).Paint(painter, QPointF(2, 2));
    Picture(BlackDrawing(), QSize(5, 5)).Paint(painter, QPointF(30, 2));
    painter.end();
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(18, 2), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(30, 2), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(34, 6), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(35, 7), QColor(Qt::white));
}

TEST(Picture, HalfAPixelMovesToTheNextWholeOneOfTheScreen) {
    QImage image = Ground({20, 20});
    QPainter painter(&image);
    FilledPicture(Qt::red, {8, 8})->Paint(painter, QPointF(4.5, 4.4));
    painter.end();
    EXPECT_EQ(image.pixelColor(4, 6), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(5, 4), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(12, 11), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(12, 12), QColor(Qt::white));
}

TEST(Picture, AtTwiceTheScaleHalfAPixelIsAPlace) {
    QImage image = Ground({20, 20}, 2);
    QPainter painter(&image);
    FilledPicture(Qt::red, {8, 8})->Paint(painter, QPointF(4.5, 4));
    painter.end();
    EXPECT_EQ(image.pixelColor(8, 8), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(9, 8), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(24, 23), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(25, 23), QColor(Qt::white));
}

TEST(Picture, AtTwiceTheScaleABitmapsPixelsStaySharp) {
    QImage image = Ground({10, 10}, 2);
    QPainter painter(&image);
    TwoColors().Paint(painter, QPointF(0, 0));
    painter.end();
    EXPECT_EQ(image.pixelColor(7, 3), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(8, 3), QColor(Qt::blue));
}

TEST(Picture, APartIsStretchedOverItsTarget) {
    QImage image = Ground({30, 30});
    QPainter painter(&image);
    TwoColors().Paint(painter, QRectF(10, 10, 8, 8), QRectF(4, 0, 4, 4));
    painter.end();
    EXPECT_EQ(image.pixelColor(9, 10), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(10, 10), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(17, 17), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(18, 17), QColor(Qt::white));
}

TEST(Picture, ATargetOfNegativeWidthMirrors) {
    QImage image = Ground({30, 30});
    QPainter painter(&image);
    TwoColors().Paint(painter, QRectF(18, 0, -8, 4), QRectF(0, 0, 8, 4));
    painter.end();
    EXPECT_EQ(image.pixelColor(10, 1), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(17, 1), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(18, 1), QColor(Qt::white));
}

TEST(Picture, LeavesThePainterAsItWas) {
    QImage image = Ground({20, 20});
    QPainter painter(&image);
    FilledPicture(Qt::red)->Paint(painter, QPointF(4, 4));
    FilledPicture(Qt::red)->Paint(painter, QRectF(4, 4, 2, 2), QRectF(0, 0, 1, 1));
    EXPECT_TRUE(painter.transform().isIdentity());
    EXPECT_FALSE(painter.hasClipping());
}

TEST(Picture, RendersOnATransparentGround) {
    const QImage image = Picture(BlackDrawing(), QSize(6, 5)).Render(2);
    EXPECT_EQ(image.size(), QSize(12, 10));
    EXPECT_EQ(image.devicePixelRatio(), 2);
    EXPECT_EQ(image.pixelColor(9, 9), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(10, 9).alpha(), 0);
    EXPECT_TRUE(Picture().Render(1).isNull());
}

TEST(Picture, StandsInAValueByReference) {
    const PictureRef picture = FilledPicture(Qt::red);
    EXPECT_EQ(PictureIn(Value(picture)), picture);
    EXPECT_EQ(PictureIn(Value()), nullptr);
    EXPECT_EQ(PictureIn(Value(ObjectRef())), nullptr);
}

class AnotherObject : public Object {};

TEST(Picture, AnotherValueIsNoPicture) {
    EXPECT_EQ(Raised([] { PictureIn(Value(1)); }), 13);
    EXPECT_EQ(Raised([] { PictureIn(Value(std::make_shared<AnotherObject>())); }), 13);
}

TEST(Picture, AnEmptyPictureIsNone) {
    EXPECT_FALSE(HasPicture(nullptr));
    EXPECT_FALSE(HasPicture(std::make_shared<Picture>()));
    EXPECT_TRUE(HasPicture(FilledPicture(Qt::red)));
}

}  // namespace
}  // namespace quarv::drawing
