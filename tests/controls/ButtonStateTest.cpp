#include "controls/ButtonState.h"

#include <gtest/gtest.h>

namespace quarv {
namespace {

TEST(ButtonState, TheFirstMoveAloneShowsHover) {
    ButtonState state;
    EXPECT_FALSE(state.Hovered());
    EXPECT_EQ(state.Move(), ButtonState::Repaint);
    EXPECT_TRUE(state.Hovered());
    EXPECT_EQ(state.Move(), ButtonState::Nothing);
}

TEST(ButtonState, LeavingEndsHoverAndAnotherMoveShowsItAgain) {
    ButtonState state;
    state.Move();
    EXPECT_EQ(state.Leave(), ButtonState::Repaint);
    EXPECT_FALSE(state.Hovered());
    EXPECT_EQ(state.Move(), ButtonState::Repaint);
}

TEST(ButtonState, ReleasedInsideItClicks) {
    ButtonState state;
    EXPECT_EQ(state.Press(), ButtonState::Repaint);
    EXPECT_TRUE(state.Pressed());
    EXPECT_EQ(state.Release(true), ButtonState::Repaint | ButtonState::RaiseClick);
    EXPECT_FALSE(state.Pressed());
}

TEST(ButtonState, ReleasedOutsideItOnlyRepaints) {
    ButtonState state;
    state.Press();
    EXPECT_EQ(state.Release(false), ButtonState::Repaint);
    EXPECT_FALSE(state.Pressed());
}

TEST(ButtonState, AfterTheClickItRepaintsWhereCursorOrFocusWentAway) {
    EXPECT_EQ(ButtonState::AfterRelease(true, false), ButtonState::Nothing);
    EXPECT_EQ(ButtonState::AfterRelease(true, true), ButtonState::Repaint);
    EXPECT_EQ(ButtonState::AfterRelease(false, false), ButtonState::Repaint);
}

TEST(ButtonState, HeldByTheKeyboardItLooksPressedUnderTheMouse) {
    ButtonState state;
    EXPECT_EQ(state.Hold(), ButtonState::Repaint);
    EXPECT_TRUE(state.Hovered());
    EXPECT_TRUE(state.Pressed());
    EXPECT_EQ(state.LetGo(), ButtonState::Repaint | ButtonState::RaiseClick);
    EXPECT_FALSE(state.Hovered());
    EXPECT_FALSE(state.Pressed());
}

TEST(ButtonState, AHoldThatEndedClicksNoMore) {
    ButtonState state;
    EXPECT_EQ(state.LetGo(), ButtonState::Nothing);
    state.Hold();
    EXPECT_EQ(state.CancelHold(), ButtonState::Repaint);
    EXPECT_EQ(state.LetGo(), ButtonState::Nothing);
    EXPECT_EQ(state.CancelHold(), ButtonState::Nothing);
}

TEST(ButtonState, ResetForgetsMouseAndKeyboard) {
    ButtonState state;
    state.Move();
    state.Press();
    state.Hold();
    EXPECT_EQ(state.Reset(), ButtonState::Repaint);
    EXPECT_FALSE(state.Hovered());
    EXPECT_FALSE(state.Pressed());
}

TEST(ButtonState, BothEndsOfTheButtonAreInside) {
    const QSizeF size(40, 30);
    EXPECT_TRUE(HitsButton({0, 0}, size));
    EXPECT_TRUE(HitsButton({40, 30}, size));
    EXPECT_FALSE(HitsButton({-1, 5}, size));
    EXPECT_FALSE(HitsButton({5, -1}, size));
    EXPECT_FALSE(HitsButton({41, 5}, size));
    EXPECT_FALSE(HitsButton({5, 31}, size));
}

}  // namespace
}  // namespace quarv
