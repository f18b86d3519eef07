#include "app/CatalogueIcons.h"

#include <gtest/gtest.h>

#include <QImage>

namespace quarv {
namespace {

QImage Paint(CatalogueIcon which, int size) {
    return MakeCatalogueIcon(which)
        .pixmap(size, size)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

TEST(CatalogueIconsTest, EachPictureIsItsOwn) {
    for (int a = TableIcon; a <= RoutinesIcon; ++a) {
        for (int b = a + 1; b <= RoutinesIcon; ++b) {
            EXPECT_NE(Paint(static_cast<CatalogueIcon>(a), 16),
                      Paint(static_cast<CatalogueIcon>(b), 16))
                << a << " and " << b;
        }
    }
}

TEST(CatalogueIconsTest, PictureIsDrawnAnewAtDoubleSize) {
    const QImage small = Paint(TableIcon, 16);
    const QImage large = Paint(TableIcon, 32);
    ASSERT_EQ(large.size(), QSize(32, 32));
    EXPECT_NE(large, small.scaled(32, 32));
    // The table's head, in the middle of its band.
    EXPECT_EQ(large.pixel(16, 8), 0xff4a86c5);
    EXPECT_EQ(qAlpha(large.pixel(0, 0)), 0);
}

}  // namespace
}  // namespace quarv
