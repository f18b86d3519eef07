#include "grid/GridCellAccess.h"

#include "GridAccessFixture.h"
#include "platform/forms/Twips.h"

namespace quarv::test {
namespace {

class GridCellAccessView : public GridAccessFixture {
  protected:
    // Column B is of this kind.
    void FillWith(CellKind kind, int rows = 3) {
        const ColumnListRef columns = ColumnsOf({1400, 1400, 900});
        columns->Items(2)->ColType = static_cast<qint32>(kind);
        Fill(PlainRows(rows), columns);
    }
    void Set(qint16 position, qint16 column, const Value& value) {
        grid.RowList()->Items(position)->SetColumnValue(column, value);
    }
    QAccessibleTableCellInterface& AsCell(int row, int column) {
        return *Cell(row, column)->tableCellInterface();
    }
    void Press(int row, int column) {
        Cell(row, column)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
};

TEST_F(GridCellAccessView, ItSaysWhatItShowsAndWhereItIs) {
    FillWith(CellKind::Text);
    EXPECT_EQ(Cell(1, 2)->role(), QAccessible::Cell);
    EXPECT_EQ(Text(1, 2), u"r2c3"_qs);
    EXPECT_EQ(Cell(1, 2)->text(QAccessible::Description), QString());
    EXPECT_EQ(AsCell(1, 2).rowIndex(), 1);
    EXPECT_EQ(AsCell(1, 2).columnIndex(), 2);
    EXPECT_EQ(AsCell(1, 2).rowExtent(), 1);
    EXPECT_EQ(AsCell(1, 2).columnExtent(), 1);
    EXPECT_EQ(AsCell(1, 2).table(), View());
    EXPECT_EQ(Cell(1, 2)->window(), View()->window());
}

TEST_F(GridCellAccessView, ALaterValueIsReadAfresh) {
    FillWith(CellKind::Text);
    QAccessibleInterface* cell = Cell(0, 0);
    Set(1, 1, Value(7));
    EXPECT_EQ(cell->text(QAccessible::Name), u"7"_qs);
    Set(1, 1, Value::Null());
    EXPECT_EQ(cell->text(QAccessible::Name), QString());
}

TEST_F(GridCellAccessView, ANumberedChoiceIsItsEntry) {
    FillWith(CellKind::List);
    auto choices = std::make_shared<StringList>();
    choices->Add(u"low"_qs);
    choices->Add(u"high"_qs);
    grid.State().columns->Items(2)->Choices = choices;
    Set(1, 2, Value(2));
    EXPECT_EQ(Text(0, 1), u"high"_qs);
}

TEST_F(GridCellAccessView, ATickIsACheckBoxNamedAsItsColumn) {
    FillWith(CellKind::Check);
    Set(1, 2, Value(true));
    Set(2, 2, Value(false));
    EXPECT_EQ(Cell(0, 1)->role(), QAccessible::CheckBox);
    EXPECT_EQ(Text(0, 1), u"B"_qs);
    EXPECT_TRUE(Cell(0, 1)->state().checkable);
    EXPECT_TRUE(Cell(0, 1)->state().checked);
    EXPECT_TRUE(Cell(1, 1)->state().checkable);
    EXPECT_FALSE(Cell(1, 1)->state().checked);
    EXPECT_FALSE(Cell(0, 0)->state().checkable);
}

TEST_F(GridCellAccessView, ACheckBoxWithoutABooleanSaysWhatItShows) {
    FillWith(CellKind::Check);
    EXPECT_EQ(Text(0, 1), u"r1c2"_qs);
    EXPECT_FALSE(Cell(0, 1)->state().checked);
}

TEST_F(GridCellAccessView, ARowThatRaisesIsReportedAndSaysNothing) {
    FillWith(CellKind::Text);
    RowAt(grid.RowList(), 2).failing = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(Text(1, 0), QString());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "11: Division by zero\n");
    EXPECT_EQ(Text(2, 0), u"r3c1"_qs);
    RowAt(grid.RowList(), 2).failing = false;
}

TEST_F(GridCellAccessView, OfALongTextOnlyTheStartIsTold) {
    FillWith(CellKind::Text);
    Set(1, 1, Value(QString(1'000'000, u'x')));
    EXPECT_EQ(Text(0, 0).size(), 20'000);
}

TEST_F(GridCellAccessView, ItLiesWhereItIsDrawn) {
    FillWith(CellKind::Text);
    const int header = forms::ToPixels(grid.Geometry().HeaderHeight());
    const int height = forms::ToPixels(grid.Geometry().RowHeight());
    // The margin is 20 pixels wide, the first column 93, so that the second begins at 113.
    const QRect place = Cell(1, 1)->rect();
    EXPECT_EQ(place.left() - grid.mapToGlobal(QPoint()).x(), 113);
    EXPECT_NEAR(place.top() - grid.mapToGlobal(QPoint()).y(), header + height, 1);
    EXPECT_NEAR(place.height(), height, 1);
    EXPECT_EQ(View()->child(1)->rect().left(), place.left());
    EXPECT_EQ(View()->child(1)->rect().height(), header);
    EXPECT_FALSE(Cell(1, 1)->state().offscreen);
}

TEST_F(GridCellAccessView, ACellThatIsScrolledAwayIsOffscreen) {
    FillWith(CellKind::Text, 200);
    EXPECT_EQ(Cell(150, 0)->rect(), QRect());
    EXPECT_TRUE(Cell(150, 0)->state().offscreen);
    grid.EnterCell(151, 1);
    EXPECT_FALSE(Cell(150, 0)->state().offscreen);
    EXPECT_TRUE(Cell(0, 0)->state().offscreen);
}

TEST_F(GridCellAccessView, AColumnBehindTheMarginIsCutThere) {
    Fill(PlainRows(3), ColumnsOf({1500, 9000}));
    grid.EnterCell(1, 2);
    EXPECT_EQ(grid.State().horizontalOffset, 1500);
    EXPECT_EQ(Cell(0, 0)->rect(), QRect());
    EXPECT_EQ(Cell(0, 1)->rect().left() - grid.mapToGlobal(QPoint()).x(), 20);
    EXPECT_EQ(Cell(0, 1)->rect().width(), 380);
}

TEST_F(GridCellAccessView, ItsHeadingIsThatOfItsColumn) {
    FillWith(CellKind::Text);
    EXPECT_EQ(AsCell(2, 1).columnHeaderCells(), QList<QAccessibleInterface*>{View()->child(1)});
    EXPECT_EQ(AsCell(2, 1).rowHeaderCells(), QList<QAccessibleInterface*>());
}

TEST_F(GridCellAccessView, PressEntersItAsAClickDoes) {
    Fill(RowsOf({1, 0, 0}));
    EXPECT_EQ(Cell(1, 1)->actionInterface()->actionNames(),
              QStringList{QAccessibleActionInterface::pressAction()});
    Press(1, 1);
    EXPECT_EQ(grid.State().currentPosition, 3);
    EXPECT_EQ(grid.State().currentColumn, 2);
    EXPECT_TRUE(AsCell(1, 1).isSelected());
    EXPECT_TRUE(Cell(1, 1)->state().selected);
    EXPECT_FALSE(Cell(1, 0)->state().selected);
    EXPECT_FALSE(Cell(0, 1)->state().selected);
    EXPECT_TRUE(Cell(0, 1)->state().selectable);
}

TEST_F(GridCellAccessView, ADisabledGridOffersNoPress) {
    FillWith(CellKind::Text);
    grid.SetEnabled(false);
    EXPECT_EQ(Cell(1, 1)->actionInterface()->actionNames(), QStringList());
    EXPECT_TRUE(Cell(1, 1)->state().disabled);
    Press(1, 1);
    EXPECT_EQ(grid.State().currentPosition, 0);
}

TEST_F(GridCellAccessView, APressWhoseHandlersReplaceTheRowsIsSurvived) {
    FillWith(CellKind::Text);
    QObject::connect(&grid, &KelEditGrid::RowSelected, &form,
                     [this] { grid.SetRowList(PlainRows(1)); });
    QAccessibleInterface* cell = Cell(2, 0);
    Press(2, 0);
    EXPECT_FALSE(cell->isValid());
    EXPECT_EQ(Table().rowCount(), 1);
}

TEST_F(GridCellAccessView, TheEditorOverItIsItsChild) {
    FillWith(CellKind::Text);
    EXPECT_EQ(Cell(1, 1)->childCount(), 0);
    Press(1, 1);
    QAccessibleInterface* editor = QAccessible::queryAccessibleInterface(grid.ShownEditor());
    ASSERT_EQ(Cell(1, 1)->childCount(), 1);
    EXPECT_EQ(Cell(1, 1)->child(0), editor);
    EXPECT_EQ(Cell(1, 1)->indexOfChild(editor), 0);
    EXPECT_EQ(editor->parent(), Cell(1, 1));
    EXPECT_EQ(Cell(1, 1)->focusChild(), View()->focusChild());
    const QPoint middle = editor->rect().center();
    EXPECT_EQ(Cell(1, 1)->childAt(middle.x(), middle.y()), editor);
    EXPECT_EQ(Cell(1, 0)->childCount(), 0);
    EXPECT_EQ(Cell(1, 0)->child(0), nullptr);
    Press(1, 0);
    EXPECT_EQ(Cell(1, 1)->childCount(), 0);
    EXPECT_EQ(editor->parent(), Cell(1, 0));
    grid.CommitAnyChanges();
    EXPECT_EQ(editor->parent(), View());
}

TEST_F(GridCellAccessView, TheButtonBesideTheEditorIsItsChildToo) {
    FillWith(CellKind::Custom);
    Press(0, 1);
    ASSERT_EQ(Cell(0, 1)->childCount(), 2);
    EXPECT_EQ(Cell(0, 1)->child(1), QAccessible::queryAccessibleInterface(Part("Elipsis")));
    EXPECT_EQ(Cell(0, 1)->child(2), nullptr);
}

TEST_F(GridCellAccessView, WhatHasAnEditorIsEditable) {
    FillWith(static_cast<CellKind>(2));
    EXPECT_TRUE(Cell(0, 0)->state().editable);
    EXPECT_FALSE(Cell(0, 1)->state().editable);
}

}  // namespace
}  // namespace quarv::test
