// GridRowNumbers: which row of a grid's list is the n-th visible one, and back, without walking the
// list for every question. Who asks owns it; it knows neither the grid nor a widget.
#pragma once

#include <vector>

#include "grid/KelEditGridRowList.h"

namespace quarv {

class GridRowNumbers {
  public:
    // The 1-based position of the visible row `number`, counted from 0; 0 where there is none.
    // Walks the list only where the numbers that the rows keep do not lead there.
    qint16 PositionOf(const KelEditGridRowList& rows, int number);
    // The number, from 0, of the row at the 1-based `position`; -1 where that is no visible row.
    int NumberAt(const KelEditGridRowList& rows, qint16 position);

  private:
    void Collect(const KelEditGridRowList& rows);

    std::vector<qint16> positions_;  // of the visible rows, as walked last
};

}  // namespace quarv
