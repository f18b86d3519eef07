// GridWheel: turns of a wheel, or strokes on a trackpad, as moves of the view in both directions.
// The control owns it and tells it the turns in eighths of a degree, away from the user and to the
// left being positive.
#pragma once

#include "grid/GridEditing.h"

namespace quarv {

class GridWheel {
  public:
    // All outlive the wheel.
    GridWheel(const GridState& state, GridScreen& screen, GridEditing& editing);

    // Three rows for each step of a wheel; smaller turns add up. Rows that all fit stay where they
    // are, but those above the first one shown can always be reached.
    void TurnAlong(int turn);
    // In proportion to the turn, as far as the horizontal scroller reaches.
    void TurnAside(int turn);

  private:
    const GridState& state_;
    GridScreen& screen_;
    GridEditing& editing_;
    int rest_ = 0;  // that made no row yet
};

}  // namespace quarv
