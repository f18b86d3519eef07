#include "grid/GridTeller.h"

#include "GridAccessFixture.h"
#include "platform/forms/TextBox.h"
#include "support/BoxWatcher.h"
#include "support/ListeningTools.h"

namespace quarv::test {
namespace {

using Ids = std::vector<QAccessible::Id>;

class GridTellerEvents : public GridAccessFixture {
  protected:
    void SetUp() override {
        GridAccessFixture::SetUp();
        Fill(PlainRows(5));
        View();
        QCoreApplication::processEvents();
        tools.Forget();
    }

    ListeningTools tools;
};

TEST_F(GridTellerEvents, AnotherRowListIsToldOnceAsAWholeNewTable) {
    grid.SetRowList(PlainRows(5));
    Cell(0, 0);
    EXPECT_EQ(tools.Told(QAccessible::TableModelChanged), Ids());
    QCoreApplication::processEvents();
    EXPECT_EQ(tools.Told(QAccessible::TableModelChanged), Ids{IdOf(View())});
    grid.Redraw();
    QCoreApplication::processEvents();
    EXPECT_EQ(tools.Told(QAccessible::TableModelChanged).size(), 1u);
}

TEST_F(GridTellerEvents, OtherColumnsAreToldAsAWholeNewTable) {
    grid.SetColList(ColumnsOf({900}));
    QCoreApplication::processEvents();
    EXPECT_EQ(tools.Told(QAccessible::TableModelChanged), Ids{IdOf(View())});
}

TEST_F(GridTellerEvents, ADeletedRowIsToldAsAWholeNewTable) {
    grid.EnterCell(2, 1);
    grid.DeleteCurrentRow();
    QCoreApplication::processEvents();
    EXPECT_EQ(tools.Told(QAccessible::TableModelChanged), Ids{IdOf(View())});
}

TEST_F(GridTellerEvents, TheCellThatIsEnteredIsToldAsSelected) {
    grid.EnterCell(2, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(tools.Told(QAccessible::Selection), Ids{IdOf(Cell(1, 0))});
    tools.Forget();
    grid.EnterCell(2, 3);
    QCoreApplication::processEvents();
    EXPECT_EQ(tools.Told(QAccessible::Selection), Ids{IdOf(Cell(1, 2))});
    tools.Forget();
    grid.Redraw();
    QCoreApplication::processEvents();
    EXPECT_EQ(tools.Told(QAccessible::Selection), Ids());
}

TEST_F(GridTellerEvents, TheKeyboardsCellIsToldAsSelected) {
    grid.EnterCell(2, 1);
    QCoreApplication::processEvents();
    tools.Forget();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_EQ(tools.Told(QAccessible::Selection), Ids{IdOf(Cell(1, 1))});
}

TEST_F(GridTellerEvents, TheClickedCellIsToldAsSelected) {
    grid.EnterCell(2, 1);
    QCoreApplication::processEvents();
    tools.Forget();
    const QPoint middle = Cell(1, 2)->rect().center();
    QTest::mouseClick(&grid, Qt::LeftButton, {}, grid.mapFromGlobal(middle));
    QCoreApplication::processEvents();
    EXPECT_EQ(tools.Told(QAccessible::Selection), Ids{IdOf(Cell(1, 2))});
}

TEST_F(GridTellerEvents, AnEditorThatTakesTheKeyboardIsToldAndNotTheCell) {
    grid.EnterCell(2, 1);
    QCoreApplication::processEvents();
    const Ids focused = tools.Told(QAccessible::Focus);
    ASSERT_FALSE(focused.empty());
    EXPECT_EQ(focused.back(), IdOf(View()->focusChild()));
}

TEST_F(GridTellerEvents, TheEditorSpeaksTheNameOfItsColumn) {
    grid.EnterCell(2, 2);
    QCoreApplication::processEvents();
    EXPECT_EQ(View()->focusChild()->text(QAccessible::Name), u"B"_qs);
    grid.EnterCell(2, 3);
    QCoreApplication::processEvents();
    EXPECT_EQ(View()->focusChild()->text(QAccessible::Name), u"C"_qs);
}

TEST_F(GridTellerEvents, AGridWithoutAnEditorHasTheKeyboardItself) {
    forms::TextBox elsewhere(&form, u"Elsewhere"_qs);
    elsewhere.Widget()->show();
    elsewhere.SetFocus();
    QCoreApplication::processEvents();
    EXPECT_FALSE(View()->state().focused);
    tools.Forget();
    grid.SetFocus();
    QCoreApplication::processEvents();
    ASSERT_FALSE(tools.Told(QAccessible::Focus).empty());
    EXPECT_EQ(tools.Told(QAccessible::Focus).back(), IdOf(View()));
    EXPECT_TRUE(View()->state().focused);
}

TEST_F(GridTellerEvents, ACellThatHasNoEditorHasTheKeyboardItself) {
    const ColumnListRef columns = ColumnsOf({1400, 1400});
    columns->Items(2)->ColType = 2;
    Fill(PlainRows(5), columns);
    {
        const BoxWatcher watcher;
        grid.EnterCell(2, 2);
    }
    QApplication::setActiveWindow(&form);
    grid.SetFocus();
    QCoreApplication::processEvents();
    ASSERT_FALSE(tools.Told(QAccessible::Focus).empty());
    EXPECT_EQ(tools.Told(QAccessible::Focus).back(), IdOf(Cell(1, 1)));
    EXPECT_EQ(View()->focusChild(), Cell(1, 1));
    EXPECT_TRUE(Cell(1, 1)->state().focused);
    EXPECT_FALSE(View()->state().focused);
}

TEST_F(GridTellerEvents, WhereNoToolListensNothingIsTold) {
    tools.StopListening();
    grid.SetRowList(PlainRows(4));
    grid.EnterCell(2, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(tools.Told(QAccessible::TableModelChanged), Ids());
    EXPECT_EQ(tools.Told(QAccessible::Selection), Ids());
}

}  // namespace
}  // namespace quarv::test
