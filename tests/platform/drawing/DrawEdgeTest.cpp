#include "platform/drawing/DrawEdge.h"

#include <gtest/gtest.h>

#include "support/FilledPicture.h"
#include "support/Raised.h"

namespace quarv::drawing {
namespace {

using test::DarkShadow;
using test::Highlight;
using test::LightEdge;
using test::Shadow;

const QColor Ground(Qt::magenta);

// The rectangle lies one pixel inside an image of 12 x 10.
QImage Drawn(unsigned edge, unsigned sides) {
    QImage image(12, 10, QImage::Format_RGB32);
    image.fill(Ground);
    QPainter painter(&image);
    DrawEdge(painter, QRect(1, 1, 10, 8), edge, sides, test::ClassicPalette());
    return image;
}

struct Kind {
    const char* name;
    unsigned edge;
    QColor leftTop;
    QColor rightBottom;
};

void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

class SingleEdge : public testing::TestWithParam<Kind> {};

INSTANTIATE_TEST_SUITE_P(, SingleEdge,
                         testing::Values(Kind{"RaisedOuter", 1, LightEdge, DarkShadow},
                                         Kind{"SunkenOuter", 2, Shadow, Highlight},
                                         Kind{"RaisedInner", 4, Highlight, Shadow},
                                         Kind{"SunkenInner", 8, DarkShadow, LightEdge}),
                         [](const auto& row) { return row.param.name; });

TEST_P(SingleEdge, DrawsAllSidesAtTheBounds) {
    const QImage image = Drawn(GetParam().edge, 15);
    EXPECT_EQ(image.pixelColor(1, 5), GetParam().leftTop);
    EXPECT_EQ(image.pixelColor(6, 1), GetParam().leftTop);
    EXPECT_EQ(image.pixelColor(10, 5), GetParam().rightBottom);
    EXPECT_EQ(image.pixelColor(6, 8), GetParam().rightBottom);
    EXPECT_EQ(image.pixelColor(2, 5), Ground);
    EXPECT_EQ(image.pixelColor(9, 5), Ground);
    EXPECT_EQ(image.pixelColor(0, 5), Ground);
    EXPECT_EQ(image.pixelColor(11, 5), Ground);
}

TEST_P(SingleEdge, RightAndBottomOwnTheSharedCorners) {
    const QImage image = Drawn(GetParam().edge, 15);
    EXPECT_EQ(image.pixelColor(1, 1), GetParam().leftTop);
    EXPECT_EQ(image.pixelColor(10, 1), GetParam().rightBottom);
    EXPECT_EQ(image.pixelColor(1, 8), GetParam().rightBottom);
    EXPECT_EQ(image.pixelColor(10, 8), GetParam().rightBottom);
}

TEST_P(SingleEdge, DrawsTheLeftSideAlone) {
    const QImage image = Drawn(GetParam().edge, 1);
    EXPECT_EQ(image.pixelColor(1, 1), GetParam().leftTop);
    EXPECT_EQ(image.pixelColor(1, 8), GetParam().leftTop);
    EXPECT_EQ(image.pixelColor(6, 1), Ground);
    EXPECT_EQ(image.pixelColor(10, 5), Ground);
    EXPECT_EQ(image.pixelColor(6, 8), Ground);
}

TEST_P(SingleEdge, DrawsTheTopSideAlone) {
    const QImage image = Drawn(GetParam().edge, 2);
    EXPECT_EQ(image.pixelColor(1, 1), GetParam().leftTop);
    EXPECT_EQ(image.pixelColor(10, 1), GetParam().leftTop);
    EXPECT_EQ(image.pixelColor(1, 5), Ground);
    EXPECT_EQ(image.pixelColor(10, 5), Ground);
    EXPECT_EQ(image.pixelColor(6, 8), Ground);
}

TEST_P(SingleEdge, DrawsTheRightSideAlone) {
    const QImage image = Drawn(GetParam().edge, 4);
    EXPECT_EQ(image.pixelColor(10, 1), GetParam().rightBottom);
    EXPECT_EQ(image.pixelColor(10, 8), GetParam().rightBottom);
    EXPECT_EQ(image.pixelColor(1, 5), Ground);
    EXPECT_EQ(image.pixelColor(6, 1), Ground);
    EXPECT_EQ(image.pixelColor(6, 8), Ground);
}

TEST_P(SingleEdge, DrawsTheBottomSideAlone) {
    const QImage image = Drawn(GetParam().edge, 8);
    EXPECT_EQ(image.pixelColor(1, 8), GetParam().rightBottom);
    EXPECT_EQ(image.pixelColor(10, 8), GetParam().rightBottom);
    EXPECT_EQ(image.pixelColor(1, 5), Ground);
    EXPECT_EQ(image.pixelColor(6, 1), Ground);
    EXPECT_EQ(image.pixelColor(10, 5), Ground);
}

TEST(DrawEdge, TheInnerRingLiesWithinTheOuterOne) {
    const QImage raised = Drawn(EDGE_RAISED, BF_RECT);
    EXPECT_EQ(raised.pixelColor(1, 5), LightEdge);
    EXPECT_EQ(raised.pixelColor(2, 5), Highlight);
    EXPECT_EQ(raised.pixelColor(9, 5), Shadow);
    EXPECT_EQ(raised.pixelColor(10, 5), DarkShadow);
    EXPECT_EQ(raised.pixelColor(3, 5), Ground);
    const QImage sunken = Drawn(EDGE_SUNKEN, BF_RECT);
    EXPECT_EQ(sunken.pixelColor(6, 1), Shadow);
    EXPECT_EQ(sunken.pixelColor(6, 2), DarkShadow);
    EXPECT_EQ(sunken.pixelColor(6, 7), LightEdge);
    EXPECT_EQ(sunken.pixelColor(6, 8), Highlight);
}

TEST(DrawEdge, ASideLeftOutTakesNoRoomFromTheInnerRing) {
    const QImage image = Drawn(EDGE_RAISED, BF_LEFT);
    EXPECT_EQ(image.pixelColor(2, 1), Highlight);
    EXPECT_EQ(image.pixelColor(2, 8), Highlight);
}

TEST(DrawEdge, ARingBothRaisedAndSunkenIsNotDrawn) {
    const QImage image = Drawn(BDR_RAISEDOUTER | BDR_SUNKENOUTER, BF_RECT);
    EXPECT_EQ(image.pixelColor(1, 5), Ground);
    EXPECT_EQ(image.pixelColor(10, 5), Ground);
}

TEST(DrawEdge, NothingIsDrawnWhereThereIsNoRoom) {
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Ground);
    QPainter painter(&image);
    DrawEdge(painter, QRect(1, 1, 0, 2), BDR_RAISEDINNER, BF_RECT, test::ClassicPalette());
    EXPECT_EQ(image.pixelColor(1, 1), Ground);
    EXPECT_EQ(image.pixelColor(0, 1), Ground);
}

TEST(DrawEdge, UnknownCodesAreRefused) {
    EXPECT_EQ(Raised([] { Drawn(16, 15); }), 5);
    EXPECT_EQ(Raised([] { Drawn(4, 16); }), 5);
}

TEST(DrawEdge, ALineIsAPixelWideAtTwiceTheScaleToo) {
    QImage image(20, 20, QImage::Format_RGB32);
    image.fill(Ground);
    image.setDevicePixelRatio(2);
    QPainter painter(&image);
    DrawEdge(painter, QRect(0, 0, 10, 10), BDR_RAISEDINNER, BF_RECT, test::ClassicPalette());
    EXPECT_EQ(image.pixelColor(1, 10), Highlight);
    EXPECT_EQ(image.pixelColor(2, 10), Ground);
    EXPECT_EQ(image.pixelColor(18, 10), Shadow);
}

}  // namespace
}  // namespace quarv::drawing
