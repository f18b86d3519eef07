// GridEditing where rows come and go: the add-row line, deleting, the mouse, the button of a cell.
#include "GridFixture.h"

namespace quarv::test {
namespace {

class GridEditingRowsTest : public GridFixture {};

TEST_F(GridEditingRowsTest, AddRowModeAppendsTheHostsRow) {
    const RowListRef rows = PlainRows(2);
    Fill(rows);
    const FakeRowRef row = OfferRow();
    bool helper = false;
    EXPECT_EQ(editing.AddRowMode(helper), row);
    EXPECT_EQ(rows->Count(), 3);
    EXPECT_EQ(rows->Items(3), row);
    EXPECT_EQ(state.mode, GridMode::NewRow);
    EXPECT_EQ(state.currentPosition, 3);
    EXPECT_EQ(state.currentColumn, 1);
    EXPECT_EQ(host.told, (Told{"AddRow", "RowSelected"}));
    EXPECT_EQ(editors.place, QRectF(300, 900, 1400, 300));
}

TEST_F(GridEditingRowsTest, AHostMayRefuseANewRow) {
    Fill(PlainRows(2));
    editing.Select(1, 1);
    bool helper = true;
    EXPECT_EQ(editing.AddRowMode(helper), nullptr);
    EXPECT_EQ(state.rows->Count(), 2);
    ExpectNothingSelected();
    Click(0, 400);
    EXPECT_EQ(state.currentPosition, 1);
    EXPECT_EQ(editors.shown, Kind::Text);
}

TEST_F(GridEditingRowsTest, TheFirstRowOfAllIsShownFirst) {
    Fill(PlainRows(0));
    const FakeRowRef row = OfferRow();
    Click(0, 400);
    EXPECT_EQ(state.topRow, row);
    EXPECT_EQ(state.mode, GridMode::NewRow);
    EXPECT_EQ(editors.place, QRectF(300, 300, 1400, 300));
}

TEST_F(GridEditingRowsTest, ANewRowOutOfViewScrolls) {
    Fill(PlainRows(8));
    const FakeRowRef row = OfferRow();
    bool helper = false;
    editing.AddRowMode(helper);
    EXPECT_EQ(state.topRow, row);
    EXPECT_EQ(screen.verticalMax, 9);
    EXPECT_EQ(screen.verticalValue, 9);
}

TEST_F(GridEditingRowsTest, TheHelperPressesTheButtonOfTheFirstCell) {
    const ColumnListRef columns = ColumnsOf({1400});
    columns->Items(1)->ColType = 5;
    Fill(PlainRows(1), columns);
    OfferRow();
    bool helper = true;
    editing.AddRowMode(helper);
    EXPECT_EQ(host.told, (Told{"AddRow", "RowSelected", "CustomColumnElipsis A"}));
    host.told.clear();
    helper = false;
    editing.AddRowMode(helper);
    EXPECT_EQ(host.told, (Told{"AddRow", "RowSelected"}));
}

TEST_F(GridEditingRowsTest, EscapeDropsAnEmptyNewRow) {
    Fill(PlainRows(8));
    OfferRow();
    bool helper = false;
    editing.AddRowMode(helper);
    ASSERT_TRUE(screen.verticalShown);
    editing.Escape();
    EXPECT_EQ(state.rows->Count(), 8);
    EXPECT_FALSE(screen.verticalShown);
    ExpectNothingSelected();
    EXPECT_EQ(state.topRow, state.rows->Items(1));
}

TEST_F(GridEditingRowsTest, EscapeDropsANewRowThatIsNotEmptyToo) {
    Fill(PlainRows(1));
    OfferRow()->empty = false;
    bool helper = false;
    editing.AddRowMode(helper);
    editing.Escape();
    EXPECT_EQ(state.rows->Count(), 1);
}

TEST_F(GridEditingRowsTest, LeavingAnEmptyNewRowDropsIt) {
    Fill(PlainRows(2));
    OfferRow();
    bool helper = false;
    editing.AddRowMode(helper);
    Click(0, 400);
    EXPECT_EQ(state.rows->Count(), 2);
    EXPECT_EQ(state.mode, GridMode::Row);
    EXPECT_EQ(state.currentPosition, 1);
}

TEST_F(GridEditingRowsTest, ANewRowWithContentsStays) {
    Fill(PlainRows(2));
    const FakeRowRef row = OfferRow();
    bool helper = false;
    editing.AddRowMode(helper);
    row->empty = false;
    editing.LeaveAddRowMode();
    EXPECT_EQ(state.rows->Count(), 3);
    EXPECT_EQ(state.mode, GridMode::Row);
    EXPECT_EQ(state.currentRow, row);
}

TEST_F(GridEditingRowsTest, OutsideAddRowModeAnEmptyRowStays) {
    Fill(PlainRows(2));
    RowAt(state.rows, 2).empty = true;
    editing.Select(2, 1);
    editing.LeaveAddRowMode();
    EXPECT_EQ(state.rows->Count(), 2);
}

TEST_F(GridEditingRowsTest, ANewListLosesNoRowToAnOldNewRow) {
    Fill(PlainRows(2));
    OfferRow();
    bool helper = false;
    editing.AddRowMode(helper);
    layout.SetRowList(PlainRows(5));
    Click(1, 400);
    EXPECT_EQ(state.rows->Count(), 5);
    EXPECT_EQ(state.currentPosition, 2);
}

TEST_F(GridEditingRowsTest, DeletingTellsRemovesAndDeselects) {
    const RowListRef rows = PlainRows(3);
    const RowRef third = rows->Items(3);
    Fill(rows);
    editing.Select(2, 1);
    host.told.clear();
    editing.DeleteCurrentRow();
    EXPECT_EQ(host.told, (Told{"DeleteRow", "RowSelected nothing"}));
    EXPECT_EQ(rows->Count(), 2);
    EXPECT_EQ(rows->Items(2), third);
    EXPECT_EQ(third->VisibleIndex(), 2);
    ExpectNothingSelected();
    EXPECT_EQ(state.topRow, rows->Items(1));
}

TEST_F(GridEditingRowsTest, WithoutARowNothingIsDeleted) {
    Fill(PlainRows(3));
    editing.DeleteCurrentRow();
    EXPECT_TRUE(host.told.empty());
    EXPECT_EQ(state.rows->Count(), 3);
}

TEST_F(GridEditingRowsTest, ARowThatTheHandlerRemovedIsNotRemovedTwice) {
    const RowListRef rows = PlainRows(3);
    Fill(rows);
    editing.Select(2, 1);
    host.onDeleteRow = [&rows](RowRef&) { rows->Remove(2); };
    editing.DeleteCurrentRow();
    EXPECT_EQ(rows->Count(), 2);
}

TEST_F(GridEditingRowsTest, AChangeMayDeleteItsOwnRow) {
    const RowListRef rows = PlainRows(3);
    Fill(rows);
    editing.Select(1, 1);
    host.onColumnChanged = [this](RowRef&) { editing.DeleteCurrentRow(); };
    Click(2, 400);
    EXPECT_EQ(rows->Count(), 2);
    ExpectNothingSelected();
    host.onColumnChanged = nullptr;
    Click(1, 400);
    EXPECT_EQ(state.currentPosition, 2);
}

TEST_F(GridEditingRowsTest, ChangeToSetupShowsTheFirstRows) {
    const RowListRef rows = PlainRows(20);
    Fill(rows, ColumnsOf({6000, 4000}));
    editing.Select(15, 2);
    editing.ScrollHorizontally(500);
    host.told.clear();
    editing.ChangeToSetup();
    EXPECT_EQ(host.told, Told{"RowSelected nothing"});
    ExpectNothingSelected();
    EXPECT_EQ(state.topRow, rows->Items(1));
    EXPECT_EQ(state.horizontalOffset, 0);
    EXPECT_EQ(screen.verticalValue, 1);
}

TEST_F(GridEditingRowsTest, AClickLeftOfTheColumnsSelectsTheRowAlone) {
    Fill(PlainRows(3));
    Click(1, 299);
    EXPECT_EQ(state.currentPosition, 2);
    EXPECT_EQ(editors.shown, Kind::None);
    EXPECT_EQ(host.told, Told{"RowSelected"});
}

TEST_F(GridEditingRowsTest, AClickForgetsTheHorizontalOffset) {
    Fill(PlainRows(3), ColumnsOf({3000, 4000}));
    editing.ScrollHorizontally(1000);
    Click(0, 3000);
    EXPECT_EQ(state.currentColumn, 1);
    EXPECT_EQ(editors.place.left(), -700);
}

TEST_F(GridEditingRowsTest, AClickUnderTheLastLineAddsARow) {
    const RowListRef rows = PlainRows(3);
    Fill(rows);
    Click(0, 400);
    editors.text = QStringLiteral("x");
    host.told.clear();
    const FakeRowRef row = OfferRow();
    Click(3, 2000);
    EXPECT_EQ(host.told, (Told{"ColumnChanged A", "AddRow", "RowSelected"}));
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"x");
    EXPECT_EQ(state.currentRow, row);
    EXPECT_EQ(state.currentColumn, 2);
}

TEST_F(GridEditingRowsTest, AClickFurtherDownOrInTheHeaderDoesNothing) {
    Fill(PlainRows(3));
    Click(0, 400);
    host.told.clear();
    Click(4, 400);
    editing.Release(400, 299);
    EXPECT_TRUE(host.told.empty());
    EXPECT_EQ(state.currentColumn, 1);
}

TEST_F(GridEditingRowsTest, AClickPassesNoDeletedRow) {
    const RowListRef rows = RowsOf({0, 1, 0, 0});
    Fill(rows);
    Click(2, 400);
    EXPECT_EQ(state.currentPosition, 3);
    Click(1, 400);
    EXPECT_EQ(state.currentPosition, 2);
}

TEST_F(GridEditingRowsTest, AClickInTheSameRowOnlyChangesTheColumn) {
    Fill(PlainRows(3));
    OfferRow();
    Click(3, 400);
    host.told.clear();
    Click(3, 2000);
    EXPECT_EQ(state.mode, GridMode::NewRow);
    EXPECT_EQ(state.currentColumn, 2);
    EXPECT_EQ(host.told, Told{"ColumnChanged A"});
}

TEST_F(GridEditingRowsTest, ABrowseButtonAsksForTheDirectoryAndTheFile) {
    const RowListRef rows = PlainRows(1);
    const ColumnListRef columns = ColumnsOf({1400});
    columns->Items(1)->ColType = 4;
    columns->Items(1)->BrowseText = QStringLiteral("Texts");
    Fill(rows, columns);
    editing.Select(1, 1);
    host.told.clear();
    host.givenDirectory = QStringLiteral("/home");
    host.chosenFile = QStringLiteral("c:\\a\\b.txt");
    editing.PressElipsis();
    EXPECT_EQ(host.told, (Told{"GetDirectoryForBrowse A", "ChooseFile /home Texts A"}));
    EXPECT_EQ(editors.text, u"c:\\a\\b.txt");
    editing.Commit();
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"b.txt");
    editors.text = QStringLiteral("kept");
    host.chosenFile.reset();
    editing.PressElipsis();
    EXPECT_EQ(editors.text, u"kept");
}

TEST_F(GridEditingRowsTest, ACustomButtonShowsWhatTheHostHasSet) {
    const RowListRef rows = PlainRows(1);
    const ColumnListRef columns = ColumnsOf({1400});
    columns->Items(1)->ColType = 5;
    Fill(rows, columns);
    editing.Select(1, 1);
    host.told.clear();
    host.onElipsis = [](RowRef& row) { row->SetColumnValue(1, Value(u"set")); };
    editing.PressElipsis();
    EXPECT_EQ(host.told, Told{"CustomColumnElipsis A"});
    EXPECT_EQ(editors.text, u"set");
}

TEST_F(GridEditingRowsTest, OtherCellsHaveNoButton) {
    Fill(PlainRows(1));
    editing.Select(1, 1);
    host.told.clear();
    editing.PressElipsis();
    EXPECT_TRUE(host.told.empty());
}

TEST_F(GridEditingRowsTest, DroppingANewRowInFrontShowsTheRowsBeforeIt) {
    Fill(PlainRows(20));
    OfferRow();
    bool helper = false;
    editing.AddRowMode(helper);
    ASSERT_EQ(screen.verticalValue, 21);
    editing.Escape();
    EXPECT_EQ(state.topRow, state.rows->Items(20));
    EXPECT_EQ(screen.verticalValue, 20);
}

TEST_F(GridEditingRowsTest, ARowBehindTheNewOneIsNotDroppedForIt) {
    Fill(PlainRows(2));
    OfferRow();
    bool helper = false;
    editing.AddRowMode(helper);
    const auto behind = std::make_shared<FakeRow>();
    state.rows->Add(behind);
    editing.Escape();
    EXPECT_EQ(state.rows->Count(), 4);
    EXPECT_EQ(state.rows->Items(4), behind);
    ExpectNothingSelected();
}

TEST_F(GridEditingRowsTest, ANewRowThatCannotBeReadIsANewRowAllTheSame) {
    Fill(PlainRows(2));
    const FakeRowRef row = OfferRow();
    row->failing = true;
    bool helper = false;
    EXPECT_EQ(Raised([&] { editing.AddRowMode(helper); }), 11);
    EXPECT_EQ(state.mode, GridMode::NewRow);
    Click(0, 400);
    EXPECT_EQ(state.rows->Count(), 2);
}

TEST_F(GridEditingRowsTest, ADeletedFirstRowStaysFirstWhenARowIsAdded) {
    const RowListRef rows = RowsOf({1, 0});
    Fill(rows);
    OfferRow();
    bool helper = false;
    editing.AddRowMode(helper);
    EXPECT_EQ(state.topRow, rows->Items(1));
    editing.Escape();
    EXPECT_EQ(state.topRow, rows->Items(1));
}

TEST_F(GridEditingRowsTest, AFileChosenForOneCellGoesIntoNoOther) {
    const ColumnListRef columns = ColumnsOf({1400, 1400});
    columns->Items(1)->ColType = 4;
    columns->Items(2)->ColType = 4;
    Fill(PlainRows(1), columns);
    editing.Select(1, 1);
    host.chosenFile = QStringLiteral("chosen");
    host.onChooseFile = [this] { editing.Select(1, 2); };
    editing.PressElipsis();
    EXPECT_EQ(editors.text, u"");
}

}  // namespace
}  // namespace quarv::test
