#include "grid/GridWheel.h"

#include "GridFixture.h"

namespace quarv::test {
namespace {

class GridWheelTest : public GridFixture {
  protected:
    qint16 Top() const { return state.topRow->VisibleIndex(); }

    GridWheel wheel{state, screen, editing};
};

TEST_F(GridWheelTest, AStepIsThreeRows) {
    Fill(PlainRows(20));
    wheel.TurnAlong(-120);
    EXPECT_EQ(Top(), 4);
    EXPECT_EQ(screen.verticalValue, 4);
    wheel.TurnAlong(120);
    EXPECT_EQ(Top(), 1);
}

TEST_F(GridWheelTest, SmallTurnsAddUp) {
    Fill(PlainRows(20));
    wheel.TurnAlong(-39);
    EXPECT_EQ(Top(), 1);
    wheel.TurnAlong(-1);
    EXPECT_EQ(Top(), 2);
}

TEST_F(GridWheelTest, EndsAtTheFirstAndTheLastRow) {
    Fill(PlainRows(20));
    wheel.TurnAlong(-100'000);
    EXPECT_EQ(Top(), 20);
    wheel.TurnAlong(100'000);
    EXPECT_EQ(Top(), 1);
}

TEST_F(GridWheelTest, RowsThatFitStay) {
    Fill(PlainRows(8));
    wheel.TurnAlong(-120);
    EXPECT_EQ(Top(), 1);
}

TEST_F(GridWheelTest, RowsAboveAreReachedThoughAllWouldFit) {
    Fill(PlainRows(9));
    editing.ScrollVertically(9);
    geometry.Resize(6000, 9000);
    layout.Resize();
    ASSERT_FALSE(screen.verticalShown);
    wheel.TurnAlong(120);
    EXPECT_EQ(Top(), 6);
    wheel.TurnAlong(-120);
    EXPECT_EQ(Top(), 6);
}

TEST_F(GridWheelTest, WithoutRowsNothingMoves) {
    Fill(PlainRows(0));
    wheel.TurnAlong(-120);
    EXPECT_EQ(state.topRow, nullptr);
}

TEST_F(GridWheelTest, TurnsAsideMoveInProportion) {
    Fill(PlainRows(1), ColumnsOf({6000, 4000}));
    wheel.TurnAside(-120);
    EXPECT_EQ(state.horizontalOffset, 900);
    wheel.TurnAside(-4);
    EXPECT_EQ(state.horizontalOffset, 930);
    wheel.TurnAside(12'000);
    EXPECT_EQ(state.horizontalOffset, 0);
}

TEST_F(GridWheelTest, ATurnThatMovesNothingCommitsNothing) {
    Fill(PlainRows(1), ColumnsOf({6000, 4000}));
    editing.Select(1, 1);
    host.told.clear();
    wheel.TurnAside(120);
    wheel.TurnAlong(120);
    EXPECT_TRUE(host.told.empty());
}

}  // namespace
}  // namespace quarv::test
