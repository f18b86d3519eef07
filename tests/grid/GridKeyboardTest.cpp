#include "grid/GridKeyboard.h"

#include "GridFixture.h"

namespace quarv::test {
namespace {

using After = GridKeyboard::After;

class GridKeyboardTest : public GridFixture {
  protected:
    void ExpectAt(qint16 position, qint16 column) const {
        EXPECT_EQ(state.currentPosition, position);
        EXPECT_EQ(state.currentColumn, column);
    }

    GridKeyboard keyboard{state, editing, navigation};
};

TEST_F(GridKeyboardTest, EachKeyHasItsWay) {
    Fill(PlainRows(20));
    editing.Select(2, 2);
    EXPECT_EQ(keyboard.Press(GridKey::Enter), After::Stay);
    ExpectAt(2, 3);
    EXPECT_EQ(keyboard.Press(GridKey::Next), After::Stay);
    ExpectAt(3, 1);
    EXPECT_EQ(keyboard.Press(GridKey::Previous), After::Stay);
    ExpectAt(2, 3);
    keyboard.Press(GridKey::Down);
    ExpectAt(3, 3);
    keyboard.Press(GridKey::PageDown);
    ExpectAt(11, 3);
    keyboard.Press(GridKey::PageUp);
    keyboard.Press(GridKey::Up);
    ExpectAt(2, 3);
    editors.text = QStringLiteral("typed");
    keyboard.Press(GridKey::Escape);
    EXPECT_EQ(editors.text, u"");
}

TEST_F(GridKeyboardTest, TabLeavesAtBothEnds) {
    Fill(PlainRows(1));
    editing.Select(1, 1);
    EXPECT_EQ(keyboard.Press(GridKey::Previous), After::LeaveBack);
    editing.Select(1, 3);
    EXPECT_EQ(keyboard.Press(GridKey::Next), After::LeaveForward);
    ExpectAt(1, 3);
}

TEST_F(GridKeyboardTest, TheButtonKeyPressesTheButton) {
    const ColumnListRef columns = ColumnsOf({1400});
    columns->Items(1)->ColType = 5;
    Fill(PlainRows(1), columns);
    editing.Select(1, 1);
    host.told.clear();
    keyboard.Press(GridKey::Button);
    EXPECT_EQ(host.told, Told{"CustomColumnElipsis A"});
}

TEST_F(GridKeyboardTest, KeysBringTheCellIntoView) {
    Fill(PlainRows(1), ColumnsOf({3000, 3000, 3000}));
    editing.Select(1, 1);
    keyboard.Press(GridKey::Enter);
    // 5445 twips show beside the margin and the vertical bar.
    EXPECT_EQ(state.horizontalOffset, 555);
    EXPECT_EQ(editors.place.left(), 300 + 3000 - 555);
    EXPECT_EQ(screen.horizontalValue, 555);
    keyboard.Press(GridKey::Previous);
    EXPECT_EQ(state.horizontalOffset, 0);
    EXPECT_EQ(editors.place.left(), 300);
}

TEST_F(GridKeyboardTest, AColumnWiderThanTheViewShowsItsBeginning) {
    Fill(PlainRows(1), ColumnsOf({1000, 9000}));
    editing.Select(1, 1);
    keyboard.Press(GridKey::Next);
    EXPECT_EQ(state.horizontalOffset, 1000);
}

TEST_F(GridKeyboardTest, RevealingCommitsNothing) {
    Fill(PlainRows(1), ColumnsOf({3000, 3000, 3000}));
    editing.Select(1, 1);
    host.told.clear();
    keyboard.Press(GridKey::Next);
    EXPECT_EQ(host.told, Told{"ColumnChanged A"});
}

TEST_F(GridKeyboardTest, OutsideAnEditorKeysLeadIn) {
    Fill(PlainRows(20));
    EXPECT_TRUE(keyboard.PressOutside(GridKey::Enter));
    ExpectAt(1, 1);
    editing.CommitAnyChanges();
    EXPECT_TRUE(keyboard.PressOutside(GridKey::Down));
    ExpectAt(2, 1);
    editing.CommitAnyChanges();
    EXPECT_TRUE(keyboard.PressOutside(GridKey::Enter));
    ExpectAt(2, 1);
}

TEST_F(GridKeyboardTest, OutsideAnEditorTabPassesBy) {
    Fill(PlainRows(2));
    for (const GridKey key : {GridKey::None, GridKey::Next, GridKey::Previous, GridKey::Button}) {
        EXPECT_FALSE(keyboard.PressOutside(key));
    }
    ExpectNothingSelected();
}

TEST_F(GridKeyboardTest, EnterBringsTheCurrentRowBackIntoView) {
    const RowListRef rows = PlainRows(40);
    Fill(rows);
    editing.Select(2, 1);
    editing.ScrollVertically(20);
    keyboard.PressOutside(GridKey::Enter);
    ExpectAt(2, 1);
    EXPECT_EQ(state.topRow, rows->Items(2));
    EXPECT_EQ(editors.place.top(), 300);
}

}  // namespace
}  // namespace quarv::test
