#include "grid/KelEditGridAccess.h"

#include "GridAccessFixture.h"

namespace quarv::test {
namespace {

class KelEditGridAccessTable : public GridAccessFixture {};

TEST_F(KelEditGridAccessTable, ItIsATableUnderTheGridsSpokenName) {
    Fill(PlainRows(5));
    EXPECT_EQ(View()->role(), QAccessible::Table);
    EXPECT_EQ(View()->text(QAccessible::Name), u"Grid"_qs);
    grid.SetSpokenName(u"Rows of People"_qs);
    EXPECT_EQ(View()->text(QAccessible::Name), u"Rows of People"_qs);
    EXPECT_EQ(Table().rowCount(), 5);
    EXPECT_EQ(Table().columnCount(), 3);
}

TEST_F(KelEditGridAccessTable, ColumnsAreDescribedByTheirHeadings) {
    Fill(PlainRows(5));
    EXPECT_EQ(Table().columnDescription(0), u"A"_qs);
    EXPECT_EQ(Table().columnDescription(2), u"C"_qs);
    EXPECT_EQ(Table().columnDescription(3), QString());
    EXPECT_EQ(Table().columnDescription(-1), QString());
    EXPECT_EQ(Table().rowDescription(0), QString());
}

TEST_F(KelEditGridAccessTable, ItsChildrenAreTheHeadingsThenTheCellsRowByRow) {
    Fill(PlainRows(5));
    ASSERT_EQ(View()->childCount(), 18);
    EXPECT_EQ(View()->child(1)->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(View()->child(1)->text(QAccessible::Name), u"B"_qs);
    EXPECT_EQ(View()->child(3), Cell(0, 0));
    EXPECT_EQ(View()->child(7), Cell(1, 1));
    EXPECT_EQ(View()->child(17), Cell(4, 2));
    EXPECT_EQ(View()->child(17)->text(QAccessible::Name), u"r5c3"_qs);
    EXPECT_EQ(View()->child(18), nullptr);
    EXPECT_EQ(View()->child(-1), nullptr);
    for (int i = 0; i < 18; ++i) EXPECT_EQ(View()->indexOfChild(View()->child(i)), i);
    EXPECT_EQ(View()->child(7)->parent(), View());
}

TEST_F(KelEditGridAccessTable, OutsideTheTableThereAreNoCells) {
    Fill(PlainRows(5));
    EXPECT_EQ(Cell(5, 0), nullptr);
    EXPECT_EQ(Cell(0, 3), nullptr);
    EXPECT_EQ(Cell(-1, 0), nullptr);
    EXPECT_EQ(Cell(0, -1), nullptr);
    EXPECT_EQ(View()->indexOfChild(nullptr), -1);
    EXPECT_EQ(View()->indexOfChild(QAccessible::queryAccessibleInterface(&form)), -1);
}

TEST_F(KelEditGridAccessTable, AnEmptyGridHasNoChildren) {
    EXPECT_EQ(View()->childCount(), 0);
    EXPECT_EQ(View()->child(0), nullptr);
    EXPECT_EQ(View()->childAt(View()->rect().center().x(), View()->rect().center().y()), nullptr);
    EXPECT_EQ(Table().selectedCells(), QList<QAccessibleInterface*>());
    EXPECT_FALSE(Table().selectRow(0));
}

TEST_F(KelEditGridAccessTable, DeletedRowsAreNotThere) {
    Fill(RowsOf({1, 0, 1, 0, 0}));
    ASSERT_EQ(Table().rowCount(), 3);
    EXPECT_EQ(Text(0, 0), u"r2c1"_qs);
    EXPECT_EQ(Text(1, 1), u"r4c2"_qs);
    EXPECT_EQ(Text(2, 2), u"r5c3"_qs);
}

TEST_F(KelEditGridAccessTable, DeletingARowEndsTheCellsAndShowsTheRestInNewOnes) {
    Fill(PlainRows(5));
    const QAccessibleInterface* before = Cell(2, 0);
    grid.RowList()->Items(2)->SetPersistStatus(KelEditGridRow::Deleted);
    grid.NumVisibleMayHaveChanged();
    EXPECT_FALSE(before->isValid());
    EXPECT_EQ(Table().rowCount(), 4);
    EXPECT_EQ(Text(1, 0), u"r3c1"_qs);
    EXPECT_EQ(Text(3, 0), u"r5c1"_qs);
}

TEST_F(KelEditGridAccessTable, PartsOfAFormerRowListAreInvalidAndEndLater) {
    Fill(PlainRows(5));
    QAccessibleInterface* cell = Cell(1, 1);
    QAccessibleInterface* heading = View()->child(0);
    const QAccessible::Id id = IdOf(cell);
    ASSERT_TRUE(cell->isValid());
    grid.SetRowList(PlainRows(5));
    EXPECT_FALSE(cell->isValid());
    EXPECT_FALSE(heading->isValid());
    EXPECT_EQ(cell->text(QAccessible::Name), QString());
    EXPECT_EQ(cell->rect(), QRect());
    EXPECT_TRUE(cell->state().invalid);
    EXPECT_EQ(View()->indexOfChild(cell), -1);
    EXPECT_EQ(QAccessible::accessibleInterface(id), cell);
    EXPECT_NE(Cell(1, 1), cell);
    QCoreApplication::processEvents();
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
    EXPECT_TRUE(Cell(1, 1)->isValid());
}

TEST_F(KelEditGridAccessTable, PartsOfFormerColumnsAreInvalid) {
    Fill(PlainRows(5));
    const QAccessibleInterface* cell = Cell(1, 1);
    grid.SetColList(ColumnsOf({1400, 1400}));
    EXPECT_FALSE(cell->isValid());
    EXPECT_EQ(View()->childCount(), 12);
    EXPECT_EQ(Text(1, 1), u"r2c2"_qs);
}

TEST_F(KelEditGridAccessTable, PartsEndWithTheGrid) {
    auto* brief = new KelEditGrid(&form, u"Brief"_qs);
    brief->SetColList(ColumnsOf({1400}));
    brief->SetRowList(PlainRows(2));
    QAccessibleInterface* view = QAccessible::queryAccessibleInterface(brief);
    const QAccessible::Id cell = IdOf(view->tableInterface()->cellAt(1, 0));
    ASSERT_NE(QAccessible::accessibleInterface(cell), nullptr);
    delete brief;
    EXPECT_EQ(QAccessible::accessibleInterface(cell), nullptr);
}

TEST_F(KelEditGridAccessTable, OfManyCellsThoseAskedForLastAreKept) {
    Fill(PlainRows(500));
    const QAccessible::Id first = IdOf(Cell(0, 0));
    const QAccessible::Id second = IdOf(Cell(0, 1));
    for (int i = 1; i < 1024 - 1; ++i) Cell(i / 3 + 100, i % 3);
    EXPECT_EQ(IdOf(Cell(0, 0)), first);
    Cell(499, 2);
    EXPECT_NE(QAccessible::accessibleInterface(first), nullptr);
    EXPECT_EQ(QAccessible::accessibleInterface(second), nullptr);
}

TEST_F(KelEditGridAccessTable, NothingIsSelectedAtFirst) {
    Fill(PlainRows(5));
    EXPECT_EQ(Table().selectedCellCount(), 0);
    EXPECT_EQ(Table().selectedRowCount(), 0);
    EXPECT_FALSE(Table().isRowSelected(-1));
    EXPECT_EQ(View()->focusChild(), nullptr);
}

TEST_F(KelEditGridAccessTable, TheEditedCellAndItsRowAreSelected) {
    Fill(RowsOf({1, 0, 0}));
    grid.EnterCell(3, 2);
    EXPECT_EQ(Table().selectedCells(), QList<QAccessibleInterface*>{Cell(1, 1)});
    EXPECT_EQ(Table().selectedRows(), QList<int>{1});
    EXPECT_TRUE(Table().isRowSelected(1));
    EXPECT_FALSE(Table().isRowSelected(0));
    EXPECT_EQ(Table().selectedColumnCount(), 0);
}

TEST_F(KelEditGridAccessTable, SelectingARowDoesWhatAClickBesideItDoes) {
    Fill(RowsOf({1, 0, 0}));
    EXPECT_TRUE(Table().selectRow(1));
    EXPECT_EQ(grid.State().currentPosition, 3);
    EXPECT_EQ(grid.State().currentColumn, 0);
    EXPECT_EQ(Table().selectedCellCount(), 0);
    EXPECT_FALSE(Table().selectRow(2));
    EXPECT_FALSE(Table().selectRow(-1));
}

TEST_F(KelEditGridAccessTable, SelectingTheCurrentRowKeepsItsEditor) {
    Fill(PlainRows(3));
    grid.EnterCell(2, 2);
    EXPECT_TRUE(Table().selectRow(1));
    EXPECT_EQ(grid.State().currentColumn, 2);
    EXPECT_NE(grid.ShownEditor(), nullptr);
}

TEST_F(KelEditGridAccessTable, ADisabledGridSelectsNoRow) {
    Fill(PlainRows(3));
    grid.SetEnabled(false);
    EXPECT_FALSE(Table().selectRow(1));
    EXPECT_EQ(grid.State().currentPosition, 0);
}

TEST_F(KelEditGridAccessTable, TheKeyboardIsInTheEditor) {
    Fill(PlainRows(3));
    grid.EnterCell(2, 2);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(View()->focusChild(),
              QAccessible::queryAccessibleInterface(QApplication::focusWidget()));
    EXPECT_FALSE(View()->state().focused);
}

TEST_F(KelEditGridAccessTable, APointIsThePartDrawnThere) {
    Fill(RowsOf({1, 0, 0}));
    const auto at = [this](QAccessibleInterface* part) {
        const QPoint middle = part->rect().center();
        return View()->childAt(middle.x(), middle.y());
    };
    EXPECT_EQ(at(Cell(1, 2)), Cell(1, 2));
    EXPECT_EQ(at(View()->child(1)), View()->child(1));
    const QRect all = View()->rect();
    EXPECT_EQ(View()->childAt(all.left() + 2, all.top() + 40), nullptr);
    EXPECT_EQ(View()->childAt(all.left() + 100, all.bottom() - 30), nullptr);
    EXPECT_EQ(View()->childAt(all.right() + 5, all.top() + 5), nullptr);
}

}  // namespace
}  // namespace quarv::test
