#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalSpy>

#include "DataGridFixture.h"
#include "platform/forms/TextBox.h"

namespace quarv::forms {
namespace {

class DataGridKeys : public DataGridFixture {
  protected:
    void SetUp() override {
        DataGridFixture::SetUp();
        QApplication::clipboard()->clear();
    }
    static QString Clipboard() { return QApplication::clipboard()->text(); }
    void Select(int row, int column, int lastRow, int lastColumn) {
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, CentreOf(row, column));
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ShiftModifier,
                          CentreOf(lastRow, lastColumn));
    }
    QMenu* OpenMenu(QContextMenuEvent::Reason reason) {
        const QPoint at = CentreOf(1, 1);
        QContextMenuEvent event(reason, at, grid.viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(grid.viewport(), &event);
        return grid.findChild<QMenu*>();
    }
    // Key presses that the grid left to the form.
    class Left : public QObject {
      public:
        explicit Left(QWidget& form) { form.installEventFilter(this); }
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() != QEvent::KeyPress) return false;
            keys.push_back(static_cast<QKeyEvent*>(event)->key());
            return true;
        }
        std::vector<int> keys;
    };
};

TEST_F(DataGridKeys, OneCellIsCopiedAsItStands) {
    source.cell = [](qint64, int) { return Value(u"a\t\"b\"\r\n"); };
    grid.SetDataSource(&source);
    Select(2, 1, 2, 1);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), u"a\t\"b\"\r\n"_qs);
}

TEST_F(DataGridKeys, ABlockIsCopiedWithAndWithoutHeaders) {
    grid.SetDataSource(&source);
    Select(1, 0, 2, 1);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), u"r1c0\tr1c1\nr2c0\tr2c1\n"_qs);
    Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Clipboard(), u"Id\tName\nr1c0\tr1c1\nr2c0\tr2c1\n"_qs);
}

TEST_F(DataGridKeys, WithoutASelectionTheCurrentCellIsCopied) {
    grid.SetDataSource(&source);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), u"r0c0"_qs);
}

TEST_F(DataGridKeys, NothingToCopyLeavesTheClipboard) {
    QApplication::clipboard()->setText(u"kept"_qs);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), u"kept"_qs);
}

TEST_F(DataGridKeys, AFailedCopyIsToldAndLeavesTheClipboard) {
    QApplication::clipboard()->setText(u"kept"_qs);
    grid.SetDataSource(&source);
    source.Refresh({u"a"_qs}, 1);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), u"kept"_qs);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].number, 9);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(DataGridKeys, ARowNumberSelectsItsRow) {
    grid.SetDataSource(&source);
    const QHeaderView& numbers = *grid.verticalHeader();
    QTest::mouseClick(numbers.viewport(), Qt::LeftButton, {},
                      {5, numbers.sectionViewportPosition(2) + 5});
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), u"r2c0\tr2c1\tr2c2\n"_qs);
}

TEST_F(DataGridKeys, AColumnNameSelectsTheRowsReadSoFar) {
    source.Refresh({u"a"_qs, u"b"_qs}, 3);
    grid.SetDataSource(&source);
    const QHeaderView& names = *grid.horizontalHeader();
    QTest::mouseClick(names.viewport(), Qt::LeftButton, {},
                      {names.sectionViewportPosition(1) + 20, 5});
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), u"r0c1\nr1c1\nr2c1\n"_qs);
}

TEST_F(DataGridKeys, TheCornerSelectsAllAndReadsToTheEnd) {
    grid.SetDataSource(&source);
    auto* corner = grid.findChild<QAbstractButton*>();
    ASSERT_NE(corner, nullptr);
    QTest::mouseClick(corner, Qt::LeftButton);
    EXPECT_TRUE(source.AtEnd());
    EXPECT_EQ(grid.selectionModel()->selection().first().height(), 10'000);
}

TEST_F(DataGridKeys, TheMenuShowsItsKeysAndActs) {
    grid.SetDataSource(&source);
    Select(1, 1, 1, 2);
    QMenu* menu = OpenMenu(QContextMenuEvent::Mouse);
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    const QList<QAction*> actions = menu->actions();
    ASSERT_EQ(actions.size(), 4);
    EXPECT_EQ(actions[0]->text(), u"&Copy"_qs);
    EXPECT_EQ(actions[0]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_C));
    EXPECT_EQ(actions[1]->text(), u"Copy with &Headers"_qs);
    EXPECT_EQ(actions[1]->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
    EXPECT_EQ(actions[3]->text(), u"Select &All"_qs);
    EXPECT_EQ(actions[3]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_A));
    QTest::keyClick(menu, Qt::Key_H);
    EXPECT_EQ(Clipboard(), u"Name\tTown\nr1c1\tr1c2\n"_qs);
}

TEST_F(DataGridKeys, TheMenuOfAnEmptyGridIsDisabled) {
    QMenu* menu = OpenMenu(QContextMenuEvent::Keyboard);
    ASSERT_NE(menu, nullptr);
    for (const QAction* action : menu->actions())
        EXPECT_TRUE(action->isSeparator() || !action->isEnabled());
    menu->close();
}

TEST_F(DataGridKeys, KeysThatItDoesNotUseReachTheForm) {
    grid.SetDataSource(&source);
    Left left(form);
    Press(Qt::Key_F5);
    QTest::keyClick(&grid, 'r');
    Press(Qt::Key_Return);
    Press(Qt::Key_Escape);
    EXPECT_EQ(left.keys, (std::vector<int>{Qt::Key_F5, Qt::Key_R, Qt::Key_Return, Qt::Key_Escape}));
}

TEST_F(DataGridKeys, LettersDoNotSearch) {
    grid.SetDataSource(&source);
    int asked = 0;
    source.cell = [&asked](qint64, int) {
        ++asked;
        return Value();
    };
    QTest::keyClick(&grid, 'z');
    Press(Qt::Key_Space);
    EXPECT_EQ(asked, 0);
}

TEST_F(DataGridKeys, ArrowsAndPagesMoveTheCurrentCell) {
    grid.SetDataSource(&source);
    Press(Qt::Key_Down);
    Press(Qt::Key_Right);
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(1, 1));
    Press(Qt::Key_PageDown);
    EXPECT_GT(grid.currentIndex().row(), Screen() - 2);
    Press(Qt::Key_PageUp);
    EXPECT_LT(grid.currentIndex().row(), 3);
    Press(Qt::Key_End);
    EXPECT_EQ(grid.currentIndex().column(), 2);
    Press(Qt::Key_Home);
    EXPECT_EQ(grid.currentIndex().column(), 0);
    Press(Qt::Key_End, Qt::ControlModifier);
    Press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(0, 0));
    EXPECT_EQ(Bar().value(), 0);
}

TEST_F(DataGridKeys, ShiftExtendsTheSelectionFromTheFirstCell) {
    grid.SetDataSource(&source);
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), u"r0c0\tr0c1\nr1c0\tr1c1\n"_qs);
}

TEST_F(DataGridKeys, TabEntersAtTheCurrentCellAndLeaves) {
    TextBox before(&form, u"Before"_qs);
    TextBox after(&form, u"After"_qs);
    QWidget::setTabOrder(&before, &grid);
    QWidget::setTabOrder(&grid, &after);
    before.SetVisible(true);
    after.SetVisible(true);
    grid.SetDataSource(&source);
    Settle();
    Press(Qt::Key_Tab);
    EXPECT_FALSE(grid.hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_TRUE(grid.hasFocus());
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(0, 0));
    Press(Qt::Key_Backtab);
    EXPECT_FALSE(grid.hasFocus());
}

}  // namespace
}  // namespace quarv::forms
