#include "platform/drawing/RasterOperation.h"

#include <gtest/gtest.h>

#include "support/Raised.h"

namespace quarv::drawing {
namespace {

struct Case {
    const char* name;
    qint64 code;
    QRgb result;  // of the source 0xF0CC00 over 0xAA5533
};

void PrintTo(const Case& operation, std::ostream* out) {
    *out << operation.name;
}

class RasterOperations : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(, RasterOperations,
                         testing::Values(Case{"SourceCopy", 0x00CC0020, 0xFFF0CC00},
                                         Case{"SourceAnd", 0x008800C6, 0xFFA04400},
                                         Case{"SourcePaint", 0x00EE0086, 0xFFFADD33},
                                         Case{"SourceInvert", 0x00660046, 0xFF5A9933},
                                         Case{"NotSourceCopy", 0x00330008, 0xFF0F33FF},
                                         Case{"SourceErase", 0x00440328, 0xFF508800},
                                         Case{"NotSourceErase", 0x001100A6, 0xFF0522CC},
                                         Case{"MergePaint", 0x00BB0226, 0xFFAF77FF},
                                         Case{"DestinationInvert", 0x00550009, 0xFF55AACC},
                                         Case{"Blackness", 0x00000042, 0xFF000000},
                                         Case{"Whiteness", 0x00FF0062, 0xFFFFFFFF}),
                         [](const auto& row) { return row.param.name; });

TEST_P(RasterOperations, CombineSourceAndDestination) {
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(QColor(0xAA, 0x55, 0x33));
    QImage source(2, 2, QImage::Format_RGB32);
    source.fill(QColor(0xF0, 0xCC, 0x00));
    QPainter painter(&image);
    painter.setCompositionMode(CompositionModeOf(GetParam().code));
    painter.drawImage(0, 0, source);
    painter.end();
    EXPECT_EQ(QColor(image.pixel(1, 1)), QColor(GetParam().result));
    EXPECT_EQ(image.pixelColor(2, 2), QColor(0xAA, 0x55, 0x33));
}

TEST(RasterOperation, ACodeWithoutARowIsRefused) {
    EXPECT_EQ(Raised([] { CompositionModeOf(0); }), 5);
    EXPECT_EQ(Raised([] { CompositionModeOf(0x00F00021); }), 5);
}

}  // namespace
}  // namespace quarv::drawing
