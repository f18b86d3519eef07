// GridTeller: tells assistive tools what became different in a grid since they were told last: the
// table, the current cell, where the keyboard is. The table's own view owns it and says when; it
// reads that view alone.
#pragma once

#include "grid/GridShape.h"

namespace quarv {

class KelEditGridAccess;

class GridTeller {
  public:
    // What is there now counts as told. The view outlives it.
    explicit GridTeller(const KelEditGridAccess& view);

    // The keyboard came to the grid itself: where it is is told the next time.
    void NoteFocus() { focusCame_ = true; }
    // To be called when the grid has settled, and not while it is being destroyed.
    void Tell();

  private:
    struct Place {
        int row;
        int column;

        bool operator==(const Place&) const = default;
    };

    Place Current() const;
    void TellShape();
    void TellCurrent();
    void TellFocus();

    const KelEditGridAccess& view_;
    GridShape shape_;
    Place current_;
    bool focusCame_ = false;
};

}  // namespace quarv
