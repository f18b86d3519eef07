#include "grid/GridGeometry.h"

#include <gtest/gtest.h>

#include "GridFakes.h"
#include "support/Raised.h"

namespace quarv {
namespace {

// Header and rows of 300 twips, bars of 255.
GridGeometry At(double width, double height) {
    GridGeometry geometry(GridMetrics{240, 300, 255, 255});
    geometry.Resize(width, height);
    return geometry;
}

TEST(GridGeometry, TheHeaderIsAQuarterHigherThanItsText) {
    EXPECT_EQ(GridGeometry(GridMetrics{195, 285, 0, 0}).HeaderHeight(), 244);  // 243.75
    EXPECT_EQ(GridGeometry(GridMetrics{198, 285, 0, 0}).HeaderHeight(), 248);  // 247.5, to even
    EXPECT_EQ(GridGeometry(GridMetrics{202, 285, 0, 0}).HeaderHeight(), 252);  // 252.5, to even
}

TEST(GridGeometry, ARowIsAsHighAsTheEditor) {
    EXPECT_EQ(GridGeometry(GridMetrics{240, 285.4, 0, 0}).RowHeight(), 285);
    EXPECT_EQ(GridGeometry(GridMetrics{240, 285.6, 0, 0}).RowHeight(), 286);
    EXPECT_EQ(GridGeometry(GridMetrics{240, 0, 0, 0}).RowHeight(), 1);
}

TEST(GridGeometry, CountsWholeRowsAndForgetsTheHorizontalBar) {
    EXPECT_EQ(At(6000, 2700).RowsThatFit(), 8);
    EXPECT_EQ(At(6000, 2699.4).RowsThatFit(), 7);
    EXPECT_EQ(At(6000, 2999).RowsThatFit(), 8);
    EXPECT_EQ(At(6000, 3000).RowsThatFit(), 9);
}

TEST(GridGeometry, RowsThatFitAreCutTowardsZero) {
    EXPECT_EQ(At(6000, 300).RowsThatFit(), 0);
    EXPECT_EQ(At(6000, 1).RowsThatFit(), 0);
    GridGeometry high(GridMetrics{2400, 300, 255, 255});
    high.Resize(6000, 2399);
    EXPECT_EQ(high.RowsThatFit(), -2);  // (2399 - 3000) / 300
}

TEST(GridGeometry, MoreRowsThan16BitsOverflow) {
    GridGeometry geometry(GridMetrics{8, 1, 255, 255});
    EXPECT_EQ(Raised([&] { geometry.Resize(100, 32778); }), 6);
    geometry.Resize(100, 32777);
    EXPECT_EQ(geometry.RowsThatFit(), 32767);
}

TEST(GridGeometry, LinesShownCountTheOneThatIsCut) {
    EXPECT_EQ(At(6000, 2700).LinesShown(), 8);
    EXPECT_EQ(At(6000, 2701).LinesShown(), 9);
    EXPECT_EQ(At(6000, 300).LinesShown(), 0);
    EXPECT_EQ(At(6000, 10).LinesShown(), 0);
}

TEST(GridGeometry, PlacesTheParts) {
    const GridGeometry geometry = At(6000, 2700);
    EXPECT_EQ(geometry.FocusTakerTop(), 3200);
    EXPECT_EQ(geometry.VerticalBar(), QRectF(5745, 300, 255, 2145));
    EXPECT_EQ(geometry.HorizontalBar(), QRectF(0, 2445, 5745, 255));
}

TEST(GridGeometry, AControlNoHigherThanItsHeaderKeepsTheBarsHeight) {
    GridGeometry geometry = At(6000, 2700);
    geometry.Resize(5000, 300);
    EXPECT_EQ(geometry.VerticalBar(), QRectF(4745, 300, 255, 2145));
    geometry.Resize(5000, 301);
    EXPECT_EQ(geometry.VerticalBar().height(), 0);
    geometry.Resize(5000, 655);
    EXPECT_EQ(geometry.VerticalBar().height(), 100);
}

TEST(GridGeometry, ACellLiesBehindTheMarginLessTheOffset) {
    const GridGeometry geometry = At(6000, 2700);
    const ColumnListRef columns = test::ColumnsOf({1400, 900});
    EXPECT_EQ(geometry.Cell(*columns->Items(1), 0, 0), QRectF(300, 300, 1400, 300));
    EXPECT_EQ(geometry.Cell(*columns->Items(2), 0, 2), QRectF(1700, 900, 900, 300));
    EXPECT_EQ(geometry.Cell(*columns->Items(2), 2000, 2), QRectF(-300, 900, 900, 300));
}

TEST(GridGeometry, HitsHeaderRowsAddLineAndNothing) {
    const GridGeometry geometry = At(6000, 2700);
    EXPECT_EQ(geometry.RowHit(-1, 3, 1), 0);
    EXPECT_EQ(geometry.RowHit(299, 3, 1), 0);
    EXPECT_EQ(geometry.RowHit(300, 3, 1), 1);
    EXPECT_EQ(geometry.RowHit(599, 3, 1), 1);
    EXPECT_EQ(geometry.RowHit(600, 3, 1), 2);
    EXPECT_EQ(geometry.RowHit(1199, 3, 1), 3);
    EXPECT_EQ(geometry.RowHit(1200, 3, 1), -1);
    EXPECT_EQ(geometry.RowHit(1499, 3, 1), -1);
    EXPECT_EQ(geometry.RowHit(1500, 3, 1), -2);
}

TEST(GridGeometry, AHitCountsFromTheFirstVisibleNumber) {
    const GridGeometry geometry = At(6000, 2700);
    EXPECT_EQ(geometry.RowHit(300, 8, 40), 40);
    EXPECT_EQ(geometry.RowHit(2699, 8, 40), 47);
    EXPECT_EQ(geometry.RowHit(300, 8, 32767), 32767);
    EXPECT_EQ(Raised([&] { geometry.RowHit(600, 8, 32767); }), 6);
}

TEST(GridGeometry, WithoutLinesTheFirstOneAddsARow) {
    const GridGeometry geometry = At(6000, 2700);
    EXPECT_EQ(geometry.RowHit(300, 0, 0), -1);
    EXPECT_EQ(geometry.RowHit(600, 0, 0), -2);
}

TEST(GridGeometry, HitsColumnsBehindTheMargin) {
    const ColumnListRef columns = test::ColumnsOf({1400, 1400, 900});
    EXPECT_EQ(GridGeometry::ColumnHit(299, *columns), 0);
    EXPECT_EQ(GridGeometry::ColumnHit(300, *columns), -1);
    EXPECT_EQ(GridGeometry::ColumnHit(300.5, *columns), -1);  // half a twip, to even
    EXPECT_EQ(GridGeometry::ColumnHit(301, *columns), 1);
    EXPECT_EQ(GridGeometry::ColumnHit(1700, *columns), 1);
    EXPECT_EQ(GridGeometry::ColumnHit(1701, *columns), 2);
    EXPECT_EQ(GridGeometry::ColumnHit(4000, *columns), 3);
    EXPECT_EQ(GridGeometry::ColumnHit(4001, *columns), -1);
}

TEST(GridGeometry, ASizeBeyondAllBoundsIsKeptAndOverflows) {
    GridGeometry geometry = At(6000, 2700);
    EXPECT_EQ(Raised([&] { geometry.Resize(1e30, 1e30); }), 6);
    EXPECT_EQ(geometry.Height(), 1e30);
}

}  // namespace
}  // namespace quarv
