#include "grid/GridLayout.h"

#include <limits>

#include "GridFixture.h"

namespace quarv::test {
namespace {

class GridLayoutTest : public GridFixture {};

TEST_F(GridLayoutTest, StartsWithEmptyListsAndNothingSelected) {
    EXPECT_EQ(state.columns->Count(), 0);
    EXPECT_EQ(state.rows->Count(), 0);
    EXPECT_EQ(state.topRow, nullptr);
    ExpectNothingSelected();
    EXPECT_EQ(state.rowsThatFit, 8);
    EXPECT_FALSE(screen.verticalShown);
}

TEST_F(GridLayoutTest, TheVerticalBarShowsWhenRowsDoNotFit) {
    Fill(PlainRows(5));
    EXPECT_FALSE(screen.verticalShown);
    Fill(PlainRows(8));
    EXPECT_FALSE(screen.verticalShown);
    Fill(PlainRows(9));
    EXPECT_TRUE(screen.verticalShown);
    EXPECT_EQ(screen.verticalMax, 9);
    EXPECT_EQ(screen.verticalPage, 8);
}

TEST_F(GridLayoutTest, DeletedRowsNeedNoRoom) {
    Fill(RowsOf({0, 0, 0, 0, 1, 0, 0, 0, 0}));
    EXPECT_FALSE(screen.verticalShown);
    state.rows->Add(std::make_shared<FakeRow>());
    layout.NumVisibleMayHaveChanged();
    EXPECT_EQ(screen.verticalMax, 9);
    EXPECT_TRUE(screen.verticalShown);
}

TEST_F(GridLayoutTest, AHiddenVerticalBarKeepsItsRange) {
    Fill(PlainRows(9));
    Fill(PlainRows(2));
    EXPECT_FALSE(screen.verticalShown);
    EXPECT_EQ(screen.verticalMax, 9);
}

TEST_F(GridLayoutTest, WithoutRoomOneRowShowsTheBar) {
    Fill(PlainRows(1));
    geometry.Resize(6000, 200);
    layout.Resize();
    EXPECT_TRUE(screen.verticalShown);
    EXPECT_EQ(screen.verticalPage, 1);
    Fill(PlainRows(0));
    EXPECT_FALSE(screen.verticalShown);
}

TEST_F(GridLayoutTest, ResizingCountsTheRowsAnew) {
    Fill(PlainRows(9));
    geometry.Resize(6000, 3000);
    layout.Resize();
    EXPECT_EQ(state.rowsThatFit, 9);
    EXPECT_FALSE(screen.verticalShown);
}

TEST_F(GridLayoutTest, SetRowListShowsTheFirstRowDeletedOrNot) {
    const RowListRef rows = RowsOf({1, 0, 0});
    Fill(rows);
    EXPECT_EQ(state.topRow, rows->Items(1));
    EXPECT_EQ(state.lines, (std::vector<RowRef>{rows->Items(2), rows->Items(3)}));
    layout.ShowFrom(2);
    EXPECT_EQ(state.topRow, rows->Items(3));
}

TEST_F(GridLayoutTest, AnEmptyRowListShowsNoRow) {
    Fill(PlainRows(3));
    layout.SetRowList(PlainRows(0));
    EXPECT_EQ(state.topRow, nullptr);
    EXPECT_TRUE(state.lines.empty());
    EXPECT_EQ(screen.verticalValue, 1);
}

TEST_F(GridLayoutTest, NoListIsRefused) {
    Fill(PlainRows(3));
    EXPECT_EQ(Raised([&] { layout.SetRowList(nullptr); }), 91);
    EXPECT_EQ(Raised([&] { layout.SetColList(nullptr); }), 91);
    EXPECT_EQ(state.rows->Count(), 3);
    EXPECT_EQ(state.columns->Count(), 3);
}

TEST_F(GridLayoutTest, NewListsCloseTheEditor) {
    Fill(PlainRows(3));
    Click(0, 400);
    ASSERT_EQ(editors.shown, Kind::Text);
    layout.SetRowList(PlainRows(1));
    EXPECT_EQ(editors.shown, Kind::None);
    EXPECT_EQ(state.currentColumn, 0);
    EXPECT_EQ(state.currentPosition, 0);
    Click(0, 400);
    layout.SetColList(ColumnsOf({}));
    EXPECT_EQ(editors.shown, Kind::None);
    EXPECT_EQ(state.currentPosition, 0);
}

TEST_F(GridLayoutTest, ScrollingTakesTheRowOfThatNumber) {
    const RowListRef rows = RowsOf({0, 1, 0, 0});
    Fill(rows);
    layout.ShowFrom(2);
    EXPECT_EQ(state.topRow, rows->Items(3));
}

TEST_F(GridLayoutTest, TheLastRowOfANumberWinsDeletedOnesToo) {
    const RowListRef rows = PlainRows(4);
    Fill(rows);
    RowAt(rows, 4).SetPersistStatus(1);
    RowAt(rows, 4).visible = 2;
    layout.ShowFrom(2);
    EXPECT_EQ(state.topRow, rows->Items(4));
}

TEST_F(GridLayoutTest, ANumberWithoutARowChangesNothing) {
    const RowListRef rows = PlainRows(3);
    Fill(rows);
    Click(0, 400);
    layout.ShowFrom(7);
    EXPECT_EQ(state.topRow, rows->Items(1));
    EXPECT_EQ(editors.shown, Kind::Text);
    layout.ShowFrom(2);
    EXPECT_EQ(editors.shown, Kind::None);
    EXPECT_EQ(state.currentColumn, 0);
}

TEST_F(GridLayoutTest, TheLinesAreTheVisibleRowsThatShow) {
    const RowListRef rows = RowsOf({0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    Fill(rows);
    ASSERT_EQ(state.lines.size(), 8U);
    EXPECT_EQ(state.lines[1], rows->Items(3));
    EXPECT_EQ(state.lines[7], rows->Items(9));
    geometry.Resize(6000, 2710);
    layout.Resize();
    EXPECT_EQ(state.lines.size(), 9U);
    EXPECT_EQ(layout.LineOf(*rows->Items(3)), 1);
}

TEST_F(GridLayoutTest, DataHasChangedTakesTheFirstVisibleRow) {
    const RowListRef rows = RowsOf({1, 0});
    Fill(rows);
    layout.SetTopRow(nullptr, 0);
    layout.DataHasChanged();
    EXPECT_EQ(state.topRow, rows->Items(2));
    EXPECT_EQ(screen.verticalValue, 1);
}

TEST_F(GridLayoutTest, DeletedTopRowMovesToNextVisible) {
    const RowListRef rows = PlainRows(4);
    Fill(rows);
    layout.ShowFrom(2);
    RowAt(rows, 2).SetPersistStatus(1);
    RowAt(rows, 3).SetPersistStatus(1);
    layout.NumVisibleMayHaveChanged();
    layout.DataHasChanged();
    EXPECT_EQ(state.topRow, rows->Items(4));
    EXPECT_EQ(screen.verticalValue, 2);
}

TEST_F(GridLayoutTest, DeletedLastRowsMoveTheTopBack) {
    const RowListRef rows = PlainRows(4);
    Fill(rows);
    layout.ShowFrom(3);
    RowAt(rows, 3).SetPersistStatus(1);
    RowAt(rows, 4).SetPersistStatus(1);
    RowAt(rows, 1).SetPersistStatus(0);
    layout.DataHasChanged();
    EXPECT_EQ(state.topRow, rows->Items(2));
}

TEST_F(GridLayoutTest, ATopRowThatIsNotDeletedStays) {
    const RowListRef rows = PlainRows(4);
    Fill(rows);
    layout.ShowFrom(3);
    layout.DataHasChanged();
    EXPECT_EQ(state.topRow, rows->Items(3));
    EXPECT_EQ(screen.verticalValue, 3);
}

TEST_F(GridLayoutTest, ATopRowThatIsGoneIsReplacedByTheNext) {
    const RowListRef rows = PlainRows(20);
    Fill(rows);
    layout.ShowFrom(3);
    const RowRef next = rows->Items(4);
    rows->Remove(3);
    layout.DataHasChanged();
    EXPECT_EQ(state.topRow, next);
}

TEST_F(GridLayoutTest, WhereTheTopRowIsGoneRowsThatFitAreAllShown) {
    const RowListRef rows = PlainRows(9);
    Fill(rows);
    layout.ShowFrom(9);
    rows->Remove(9);
    layout.NumVisibleMayHaveChanged();
    EXPECT_EQ(state.topRow, rows->Items(1));
    EXPECT_FALSE(screen.verticalShown);
}

TEST_F(GridLayoutTest, ColumnsThatFitNeedNoScroller) {
    Fill(PlainRows(1), ColumnsOf({3000, 3000}));
    EXPECT_FALSE(screen.horizontalShown);
    Fill(PlainRows(1), ColumnsOf({3000, 3001}));
    EXPECT_TRUE(screen.horizontalShown);
    EXPECT_EQ(screen.horizontalMax, 1);
    Fill(PlainRows(1), ColumnsOf({100}));
    EXPECT_FALSE(screen.horizontalShown);
}

TEST_F(GridLayoutTest, TheScrollerComparesTheWholeWidth) {
    Fill(PlainRows(1), ColumnsOf({6000, 4000}));
    EXPECT_EQ(screen.horizontalMax, 4000);
    EXPECT_EQ(screen.horizontalPage, 5400);
}

TEST_F(GridLayoutTest, LayingOutColumnsScrollsToTheLeft) {
    Fill(PlainRows(1), ColumnsOf({6000, 4000}));
    editing.ScrollHorizontally(700);
    EXPECT_EQ(state.horizontalOffset, 700);
    layout.SetWidths();
    EXPECT_EQ(state.horizontalOffset, 0);
    EXPECT_EQ(screen.horizontalValue, 0);
}

TEST_F(GridLayoutTest, WidthsBeyond32BitsOverflow) {
    const ColumnListRef columns = ColumnsOf({std::numeric_limits<qint32>::max(), 1});
    EXPECT_EQ(Raised([&] { layout.SetColList(columns); }), 6);
}

TEST_F(GridLayoutTest, ARowThatRaisesLeavesTheLinesWhole) {
    class Broken : public FakeRow {
      public:
        bool broken = false;
        qint32 PersistStatus() const override {
            if (broken) throw RuntimeError(RuntimeError::DivisionByZero);
            return 0;
        }
    };
    const RowListRef rows = PlainRows(2);
    const auto row = std::make_shared<Broken>();
    rows->Add(row);
    Fill(rows);
    row->broken = true;
    EXPECT_EQ(Raised([&] { layout.Redraw(); }), 11);
    EXPECT_EQ(state.lines.size(), 3U);
}

TEST_F(GridLayoutTest, RowsTakenFromTheEndTakeTheViewAlong) {
    const RowListRef rows = PlainRows(20);
    Fill(rows);
    layout.ShowFrom(18);
    while (rows->Count() > 12) rows->Remove(rows->Count());
    layout.NumVisibleMayHaveChanged();
    EXPECT_EQ(state.topRow, rows->Items(12));
    EXPECT_EQ(screen.verticalValue, 12);
}

}  // namespace
}  // namespace quarv::test
