#include "grid/GridNavigation.h"

#include "GridFixture.h"

namespace quarv::test {
namespace {

using Way = GridNavigation::Way;

class GridNavigationTest : public GridFixture {
  protected:
    void ExpectAt(qint16 position, qint16 column) const {
        EXPECT_EQ(state.currentPosition, position);
        EXPECT_EQ(state.currentColumn, column);
    }
};

TEST_F(GridNavigationTest, StepsAlongARowAndCommits) {
    const RowListRef rows = PlainRows(2);
    Fill(rows);
    editing.Select(1, 1);
    editors.text = QStringLiteral("x");
    EXPECT_TRUE(navigation.Step(Way::Forward));
    ExpectAt(1, 2);
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"x");
    EXPECT_TRUE(navigation.Step(Way::Back));
    ExpectAt(1, 1);
}

TEST_F(GridNavigationTest, StepsOverTheEndsOfRowsPastDeletedOnes) {
    Fill(RowsOf({0, 1, 0}));
    editing.Select(1, 3);
    EXPECT_TRUE(navigation.Step(Way::Forward));
    ExpectAt(3, 1);
    EXPECT_TRUE(navigation.Step(Way::Back));
    ExpectAt(1, 3);
}

TEST_F(GridNavigationTest, LeavesTheGridAtItsEnds) {
    Fill(RowsOf({1, 0, 0, 1}));
    editing.Select(2, 1);
    EXPECT_FALSE(navigation.Step(Way::Back));
    ExpectAt(2, 1);
    editing.Select(3, 3);
    EXPECT_FALSE(navigation.Step(Way::Forward));
    ExpectAt(3, 3);
}

TEST_F(GridNavigationTest, AsksForNoNewRow) {
    Fill(PlainRows(2));
    OfferRow();
    editing.Select(2, 3);
    host.told.clear();
    EXPECT_FALSE(navigation.Step(Way::Forward));
    navigation.MoveRows(Way::Forward, 1);
    navigation.MoveRows(Way::Forward, 8);
    EXPECT_EQ(state.rows->Count(), 2);
    EXPECT_TRUE(host.told.empty());
}

TEST_F(GridNavigationTest, MovesUpAndDownInTheSameColumn) {
    Fill(RowsOf({0, 1, 0, 0}));
    editing.Select(1, 2);
    navigation.MoveRows(Way::Forward, 1);
    ExpectAt(3, 2);
    navigation.MoveRows(Way::Forward, 1);
    ExpectAt(4, 2);
    navigation.MoveRows(Way::Back, 1);
    navigation.MoveRows(Way::Back, 1);
    ExpectAt(1, 2);
    navigation.MoveRows(Way::Back, 1);
    ExpectAt(1, 2);
}

TEST_F(GridNavigationTest, APageEndsAtTheLastRow) {
    Fill(PlainRows(20));
    EXPECT_EQ(navigation.Page(), 8);
    editing.Select(3, 2);
    navigation.MoveRows(Way::Forward, navigation.Page());
    ExpectAt(11, 2);
    navigation.MoveRows(Way::Forward, navigation.Page());
    navigation.MoveRows(Way::Forward, navigation.Page());
    ExpectAt(20, 2);
    navigation.MoveRows(Way::Back, 100);
    ExpectAt(1, 2);
}

TEST_F(GridNavigationTest, LeavingAnEmptyNewRowDropsIt) {
    Fill(PlainRows(2));
    OfferRow();
    bool helper = false;
    editing.AddRowMode(helper);
    navigation.MoveRows(Way::Back, 1);
    ExpectAt(2, 1);
    EXPECT_EQ(state.rows->Count(), 2);
}

TEST_F(GridNavigationTest, WithoutARowTheFirstLineIsSelected) {
    const RowListRef rows = PlainRows(20);
    Fill(rows);
    editing.ScrollVertically(5);
    navigation.MoveRows(Way::Forward, 1);
    ExpectAt(5, 1);
}

TEST_F(GridNavigationTest, AnEmptyGridHasNowhereToGo) {
    Fill(PlainRows(0));
    navigation.MoveRows(Way::Forward, 1);
    ExpectNothingSelected();
    geometry.Resize(6000, 10);
    layout.Resize();
    EXPECT_EQ(navigation.Page(), 1);
}

TEST_F(GridNavigationTest, RowsThatTheHostTookAwayDoNotHoldTheKeyboard) {
    const RowListRef rows = PlainRows(20);
    Fill(rows);
    editing.Select(15, 2);
    while (rows->Count() > 5) rows->Remove(rows->Count());
    navigation.MoveRows(Way::Back, 1);
    ExpectAt(5, 2);
}

}  // namespace
}  // namespace quarv::test
