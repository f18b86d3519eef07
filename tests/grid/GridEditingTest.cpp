// Selecting, committing and the keys of one cell; adding, deleting and the mouse are in
// GridEditingRowsTest.
#include "grid/GridEditing.h"

#include "GridFixture.h"

namespace quarv::test {
namespace {

class GridEditingTest : public GridFixture {};

TEST_F(GridEditingTest, SelectingARowTellsTheHostAndOpensTheCell) {
    const RowListRef rows = PlainRows(3);
    RowAt(rows, 2).values[2] = Value(u"old");
    Fill(rows);
    EXPECT_TRUE(editing.Select(2, 2));
    EXPECT_EQ(state.mode, GridMode::Row);
    EXPECT_EQ(state.currentRow, rows->Items(2));
    EXPECT_EQ(state.currentPosition, 2);
    EXPECT_EQ(state.currentColumn, 2);
    EXPECT_EQ(host.told, Told{"RowSelected"});
    EXPECT_EQ(editors.text, u"old");
    EXPECT_EQ(editors.place, QRectF(1700, 600, 1400, 300));
}

TEST_F(GridEditingTest, SelectingTheSameRowTellsNothing) {
    Fill(PlainRows(3));
    editing.Select(2, 1);
    host.told.clear();
    EXPECT_TRUE(editing.Select(2, 3));
    EXPECT_TRUE(host.told.empty());
    EXPECT_EQ(state.currentColumn, 3);
}

TEST_F(GridEditingTest, APositionBeyondTheListDoesNothing) {
    Fill(PlainRows(3));
    editing.Select(2, 1);
    EXPECT_FALSE(editing.Select(4, 1));
    EXPECT_EQ(state.currentPosition, 2);
    EXPECT_EQ(editors.shown, Kind::Text);
    EXPECT_EQ(Raised([&] { editing.Select(0, 1); }), 9);
    EXPECT_EQ(Raised([&] { editing.Select(-70000, 1); }), 6);
    EXPECT_EQ(state.currentPosition, 2);
}

TEST_F(GridEditingTest, WithoutATopRowNothingIsSelected) {
    Fill(PlainRows(3));
    layout.SetTopRow(nullptr, 0);
    EXPECT_FALSE(editing.Select(1, 1));
    ExpectNothingSelected();
}

TEST_F(GridEditingTest, ARowInViewLeavesTheViewWhereItIs) {
    const RowListRef rows = PlainRows(20);
    Fill(rows);
    editing.Select(8, 1);
    EXPECT_EQ(state.topRow, rows->Items(1));
    editing.Select(9, 1);
    EXPECT_EQ(state.topRow, rows->Items(9));
    EXPECT_EQ(screen.verticalValue, 9);
    EXPECT_EQ(editors.place.top(), 300);
    editing.Select(8, 1);
    EXPECT_EQ(state.topRow, rows->Items(8));
}

TEST_F(GridEditingTest, AColumnOfNoNumberOpensNothing) {
    Fill(PlainRows(3));
    EXPECT_TRUE(editing.Select(1, 0));
    EXPECT_EQ(editors.shown, Kind::None);
    EXPECT_TRUE(editing.Select(1, -1));
    EXPECT_EQ(state.currentColumn, 0);
    EXPECT_TRUE(editing.Select(1, 4));
    EXPECT_EQ(state.currentColumn, 0);
}

TEST_F(GridEditingTest, AnEmptyColumnListOpensNothing) {
    Fill(PlainRows(3), ColumnsOf({}));
    Click(0, 400);
    EXPECT_EQ(state.currentPosition, 1);
    EXPECT_EQ(editors.shown, Kind::None);
    editing.EnterKey();
    EXPECT_EQ(state.currentPosition, 2);
}

TEST_F(GridEditingTest, CommittingWritesAndTells) {
    const RowListRef rows = PlainRows(3);
    Fill(rows);
    editing.Select(1, 2);
    host.told.clear();
    editors.text = QStringLiteral("new");
    editing.Commit();
    EXPECT_EQ(RowAt(rows, 1).values[2].Text(), u"new");
    EXPECT_EQ(host.told, Told{"ColumnChanged B"});
    EXPECT_EQ(editors.shown, Kind::Text);
}

TEST_F(GridEditingTest, WithoutACellNothingIsCommitted) {
    Fill(PlainRows(3));
    editing.Commit();
    editing.Select(1, 0);
    host.told.clear();
    editing.Commit();
    EXPECT_TRUE(host.told.empty());
}

TEST_F(GridEditingTest, AColumnOfUnknownKindSaysBoom) {
    const RowListRef rows = PlainRows(1);
    const ColumnListRef columns = ColumnsOf({1400, 1400});
    columns->Items(2)->ColType = 2;
    Fill(rows, columns);
    editing.Select(1, 2);
    EXPECT_EQ(host.told, (Told{"RowSelected", "boom"}));
    EXPECT_EQ(editors.shown, Kind::None);
    host.told.clear();
    editing.Commit();
    EXPECT_EQ(host.told, Told{"ColumnChanged B"});
    EXPECT_TRUE(RowAt(rows, 1).values.empty());
}

TEST_F(GridEditingTest, AHandlerThatCommitsDoesNotRunInCircles) {
    Fill(PlainRows(1));
    editing.Select(1, 1);
    host.told.clear();
    host.onColumnChanged = [this](RowRef&) { editing.CommitAnyChanges(); };
    editing.Commit();
    EXPECT_EQ(host.told, Told{"ColumnChanged A"});
    EXPECT_EQ(editors.shown, Kind::None);
}

TEST_F(GridEditingTest, CommitAnyChangesClosesTheEditor) {
    const RowListRef rows = PlainRows(1);
    Fill(rows);
    editing.Select(1, 1);
    editors.text = QStringLiteral("x");
    const int before = screen.repaints;
    editing.CommitAnyChanges();
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"x");
    EXPECT_EQ(editors.shown, Kind::None);
    EXPECT_EQ(state.currentColumn, 0);
    EXPECT_EQ(state.currentPosition, 1);
    EXPECT_GT(screen.repaints, before);
}

TEST_F(GridEditingTest, EnterGoesToTheNextColumnAndCommits) {
    const RowListRef rows = PlainRows(2);
    Fill(rows);
    editing.Select(1, 1);
    editors.text = QStringLiteral("x");
    editing.EnterKey();
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"x");
    EXPECT_EQ(state.currentColumn, 2);
    EXPECT_EQ(state.currentPosition, 1);
}

TEST_F(GridEditingTest, EnterInTheLastColumnGoesToTheNextRow) {
    Fill(PlainRows(2));
    editing.Select(1, 3);
    editing.EnterKey();
    EXPECT_EQ(state.currentPosition, 2);
    EXPECT_EQ(state.currentColumn, 1);
    editing.Select(2, 3);
    editing.EnterKey();
    EXPECT_EQ(state.currentPosition, 2);
    EXPECT_EQ(state.currentColumn, 3);
    EXPECT_EQ(editors.shown, Kind::Text);
}

TEST_F(GridEditingTest, EnterInTheLastColumnWritesNothing) {
    const RowListRef rows = PlainRows(2);
    Fill(rows);
    editing.Select(1, 3);
    host.told.clear();
    editors.text = QStringLiteral("x");
    editing.EnterKey();
    EXPECT_EQ(host.told, Told{"RowSelected"});
    EXPECT_TRUE(RowAt(rows, 1).values.empty());
}

TEST_F(GridEditingTest, EscapeUndoesTheTyping) {
    const RowListRef rows = PlainRows(1);
    RowAt(rows, 1).values[1] = Value(u"old");
    Fill(rows);
    editing.Select(1, 1);
    editors.text = QStringLiteral("typed");
    host.told.clear();
    editing.Escape();
    EXPECT_EQ(editors.text, u"old");
    EXPECT_EQ(state.currentColumn, 1);
    EXPECT_TRUE(host.told.empty());
}

TEST_F(GridEditingTest, EscapeWithoutARowDoesNothing) {
    Fill(PlainRows(1));
    const int before = screen.repaints;
    editing.Escape();
    ExpectNothingSelected();
    EXPECT_EQ(screen.repaints, before);
}

TEST_F(GridEditingTest, ScrollingDownCommitsAndClosesTheEditor) {
    const RowListRef rows = PlainRows(20);
    Fill(rows);
    editing.Select(1, 1);
    editors.text = QStringLiteral("x");
    editing.ScrollVertically(5);
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"x");
    EXPECT_EQ(state.topRow, rows->Items(5));
    EXPECT_EQ(editors.shown, Kind::None);
    EXPECT_EQ(state.mode, GridMode::Row);
    EXPECT_EQ(state.currentPosition, 1);
}

TEST_F(GridEditingTest, ScrollingAsideMovesTheEditorAlong) {
    const RowListRef rows = PlainRows(2);
    Fill(rows, ColumnsOf({6000, 4000}));
    editing.Select(2, 1);
    editors.text = QStringLiteral("x");
    editing.ScrollHorizontally(700);
    EXPECT_EQ(RowAt(rows, 2).values[1].Text(), u"x");
    EXPECT_EQ(editors.shown, Kind::Text);
    EXPECT_EQ(editors.place, QRectF(-400, 600, 6000, 300));
}

TEST_F(GridEditingTest, ScrollingAsideWithoutACellOnlyRepaints) {
    Fill(PlainRows(2), ColumnsOf({6000, 4000}));
    const int before = screen.repaints;
    editing.ScrollHorizontally(700);
    EXPECT_TRUE(host.told.empty());
    EXPECT_EQ(screen.repaints, before + 1);
    EXPECT_EQ(state.horizontalOffset, 700);
}

TEST_F(GridEditingTest, ACellThatCannotBeReadOpensNothing) {
    const RowListRef rows = PlainRows(2);
    RowAt(rows, 1).failing = true;
    Fill(rows);
    EXPECT_EQ(Raised([&] { editing.Select(1, 1); }), 11);
    EXPECT_EQ(editors.shown, Kind::None);
    EXPECT_EQ(state.currentColumn, 0);
    EXPECT_TRUE(editing.Select(2, 1));
}

TEST_F(GridEditingTest, ACellThatCannotBeWrittenKeepsItsEditor) {
    const RowListRef rows = PlainRows(2);
    Fill(rows);
    editing.Select(1, 1);
    editors.text = QStringLiteral("typed");
    RowAt(rows, 1).failing = true;
    EXPECT_EQ(Raised([&] { Click(1, 400); }), 11);
    EXPECT_EQ(editors.shown, Kind::Text);
    EXPECT_EQ(editors.text, u"typed");
    EXPECT_EQ(state.currentPosition, 1);
    RowAt(rows, 1).failing = false;
    Click(1, 400);
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"typed");
}

TEST_F(GridEditingTest, ACellThatCannotBeWrittenKeepsTheViewWhereItIs) {
    const RowListRef rows = PlainRows(20);
    Fill(rows, ColumnsOf({6000, 4000}));
    editing.Select(1, 1);
    RowAt(rows, 1).failing = true;
    screen.verticalValue = 5;
    EXPECT_EQ(Raised([&] { editing.ScrollVertically(5); }), 11);
    EXPECT_EQ(state.topRow, rows->Items(1));
    EXPECT_EQ(screen.verticalValue, 1);
    screen.horizontalValue = 700;
    EXPECT_EQ(Raised([&] { editing.ScrollHorizontally(700); }), 11);
    EXPECT_EQ(state.horizontalOffset, 0);
    EXPECT_EQ(screen.horizontalValue, 0);
    const int before = screen.repaints;
    EXPECT_EQ(Raised([&] { editing.CommitAnyChanges(); }), 11);
    EXPECT_GT(screen.repaints, before);
    EXPECT_EQ(editors.shown, Kind::Text);
}

TEST_F(GridEditingTest, LayingOutColumnsTakesTheEditorAlong) {
    Fill(PlainRows(1), ColumnsOf({6000, 4000}));
    editing.Select(1, 1);
    editing.ScrollHorizontally(700);
    editing.SetWidths();
    EXPECT_EQ(editors.place, QRectF(300, 300, 6000, 300));
    EXPECT_EQ(editors.shown, Kind::Text);
}

TEST_F(GridEditingTest, ScrollingAsideWithARowButNoCellOnlyRepaints) {
    Fill(PlainRows(2), ColumnsOf({6000, 4000}));
    editing.Select(1, 0);
    host.told.clear();
    editing.ScrollHorizontally(700);
    EXPECT_TRUE(host.told.empty());
    EXPECT_EQ(editors.shown, Kind::None);
}

}  // namespace
}  // namespace quarv::test
