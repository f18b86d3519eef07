// GridKeyboard: what the grid's own keys do, in an editor and where none is shown. The control owns
// it and brings the keyboard where the answers say.
#pragma once

#include "grid/GridKeys.h"
#include "grid/GridNavigation.h"

namespace quarv {

class GridKeyboard {
  public:
    enum class After { Stay, LeaveForward, LeaveBack };

    // All outlive the keyboard.
    GridKeyboard(const GridState& state, GridEditing& editing, GridNavigation& navigation);

    // A key typed into an editor. Scrolls aside to where it leads.
    After Press(GridKey key);
    // A key typed where no editor is shown: the keys that go from cell to cell lead into the grid,
    // and Tab past it. False where it is not for the grid.
    bool PressOutside(GridKey key);

  private:
    After Follow(GridKey key);
    void EnterCurrentRow();

    const GridState& state_;
    GridEditing& editing_;
    GridNavigation& navigation_;
};

}  // namespace quarv
