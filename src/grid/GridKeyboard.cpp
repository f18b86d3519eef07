#include "grid/GridKeyboard.h"

namespace quarv {

using Way = GridNavigation::Way;

GridKeyboard::GridKeyboard(const GridState& state, GridEditing& editing, GridNavigation& navigation)
    : state_(state), editing_(editing), navigation_(navigation) {}

GridKeyboard::After GridKeyboard::Press(GridKey key) {
    const After after = Follow(key);
    if (after == After::Stay) editing_.Reveal();
    return after;
}

GridKeyboard::After GridKeyboard::Follow(GridKey key) {
    switch (key) {
        case GridKey::None:
            break;
        case GridKey::Enter:
            editing_.EnterKey();
            break;
        case GridKey::Escape:
            editing_.Escape();
            break;
        case GridKey::Next:
            return navigation_.Step(Way::Forward) ? After::Stay : After::LeaveForward;
        case GridKey::Previous:
            return navigation_.Step(Way::Back) ? After::Stay : After::LeaveBack;
        case GridKey::Up:
            navigation_.MoveRows(Way::Back, 1);
            break;
        case GridKey::Down:
            navigation_.MoveRows(Way::Forward, 1);
            break;
        case GridKey::PageUp:
            navigation_.MoveRows(Way::Back, navigation_.Page());
            break;
        case GridKey::PageDown:
            navigation_.MoveRows(Way::Forward, navigation_.Page());
            break;
        case GridKey::Button:
            editing_.PressElipsis();
            break;
    }
    return After::Stay;
}

bool GridKeyboard::PressOutside(GridKey key) {
    switch (key) {
        case GridKey::None:
        case GridKey::Next:
        case GridKey::Previous:
        case GridKey::Button:
            return false;
        case GridKey::Enter:
            EnterCurrentRow();
            return true;
        default:
            Press(key);
            return true;
    }
}

void GridKeyboard::EnterCurrentRow() {
    if (state_.currentPosition == 0) return navigation_.MoveRows(Way::Forward, 1);
    editing_.EnterInView(state_.currentPosition, 1);
}

}  // namespace quarv
