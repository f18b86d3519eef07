// GridState: what the grid knows between two events: its lists, which row is first, which row and
// column are being edited, how far it is scrolled. The control owns it; layout and editing change
// it. It knows no widget.
#pragma once

#include <vector>

#include "grid/KelEditGridColumnList.h"
#include "grid/KelEditGridRowList.h"

namespace quarv {

enum class GridMode : qint32 {
    NoRow = 0,   // no row is selected
    NewRow = 1,  // the selected row was appended by the grid for the user to fill
    Row = 2,     // an ordinary row is selected
};

struct GridState {
    ColumnListRef columns = std::make_shared<KelEditGridColumnList>();
    RowListRef rows = std::make_shared<KelEditGridRowList>();
    RowRef topRow;               // the first row shown; nothing where there is none
    RowRef currentRow;           // the selected row
    qint16 currentPosition = 0;  // of the current row in `rows`, 1-based; 0 where none is selected
    qint16 currentColumn = 0;    // 1-based, the column being edited; 0 where no editor is shown
    GridMode mode = GridMode::NoRow;
    qint32 horizontalOffset = 0;  // twips that the columns are scrolled to the left
    qint16 visibleRows = 0;       // in the row list, as counted last
    qint16 rowsThatFit = 0;       // whole rows in the data area; below 0 in a control without any
    std::vector<RowRef> lines;    // the rows that the last redraw drew, from the top
};

}  // namespace quarv
