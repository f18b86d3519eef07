// GridNavigation: where the keyboard goes from a cell: to the next and the previous one, to the
// rows above and below and a page away, past hidden rows, never to the add-row line. Every step
// does what a click on the cell would do. The control owns it.
#pragma once

#include "grid/GridEditing.h"

namespace quarv {

class GridNavigation {
  public:
    // Both outlive the navigation.
    GridNavigation(const GridState& state, GridEditing& editing);

    enum class Way { Forward, Back };

    // To the next or previous cell, over the end of a row. False at the grid's ends, where nothing
    // was done.
    bool Step(Way way);
    // `count` visible rows on, or to the last one there is; in the same column, the first one where
    // none is edited. Where no row is selected, to the first row shown.
    void MoveRows(Way way, int count);
    // The rows of a page; at least one.
    int Page() const;

  private:
    // The visible row nearest to the list position `from` in that direction; 0 where there is none.
    qint16 NextVisible(qint16 from, Way way) const;

    const GridState& state_;
    GridEditing& editing_;
};

}  // namespace quarv
