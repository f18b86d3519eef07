#include "grid/GridShape.h"

#include <gtest/gtest.h>

#include "GridFakes.h"

namespace quarv::test {
namespace {

class GridShapes : public ::testing::Test {
  protected:
    GridShapes() {
        state.rows = PlainRows(3);
        state.columns = ColumnsOf({100, 100});
        state.visibleRows = 3;
    }

    GridState state;
};

TEST_F(GridShapes, ItCountsVisibleRowsAndColumns) {
    state.visibleRows = 2;
    const GridShape shape(state);
    EXPECT_EQ(shape.RowCount(), 2);
    EXPECT_EQ(shape.ColumnCount(), 2);
    EXPECT_TRUE(shape.IsThatOf(state));
}

TEST_F(GridShapes, RowsThatAreGoneAreNotCounted) {
    state.rows->Clear();
    EXPECT_EQ(GridShape(state).RowCount(), 0);
}

TEST_F(GridShapes, OtherListsOfTheSameSizeAreAnotherShape) {
    const GridShape shape(state);
    const RowListRef rows = state.rows;
    state.rows = PlainRows(3);
    EXPECT_FALSE(shape.IsThatOf(state));
    state.rows = rows;
    EXPECT_TRUE(shape.IsThatOf(state));
    state.columns = ColumnsOf({100, 100});
    EXPECT_FALSE(shape.IsThatOf(state));
}

TEST_F(GridShapes, OtherCountsAreAnotherShape) {
    const GridShape shape(state);
    state.visibleRows = 2;
    EXPECT_FALSE(shape.IsThatOf(state));
    state.visibleRows = 3;
    state.columns->AddColumn(QStringLiteral("More"), 100, 0);
    EXPECT_FALSE(shape.IsThatOf(state));
}

TEST_F(GridShapes, TheShapeOfNoGridIsThatOfNone) {
    EXPECT_EQ(GridShape().RowCount(), 0);
    EXPECT_FALSE(GridShape().IsThatOf(state));
}

TEST_F(GridShapes, ItKeepsNoListAlive) {
    const std::weak_ptr<KelEditGridRowList> rows = state.rows;
    const GridShape shape(state);
    state.rows = PlainRows(3);
    EXPECT_TRUE(rows.expired());
}

}  // namespace
}  // namespace quarv::test
