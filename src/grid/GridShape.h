// GridShape: which rows and columns a grid showed at some moment, to see later whether they still
// are the ones. It keeps neither list alive and knows no row.
#pragma once

#include "grid/GridState.h"

namespace quarv {

class GridShape {
  public:
    // That of a grid without rows and columns; no grid's list is the one that it has.
    GridShape() = default;
    explicit GridShape(const GridState& state);

    // Rows that are not deleted, as the grid counted them last, and never more than there are: the
    // host may have emptied its list without telling yet.
    int RowCount() const { return rowCount_; }
    int ColumnCount() const { return columnCount_; }
    bool IsThatOf(const GridState& state) const;

  private:
    std::weak_ptr<KelEditGridRowList> rows_;
    std::weak_ptr<KelEditGridColumnList> columns_;
    int rowCount_ = 0;
    int columnCount_ = 0;
};

}  // namespace quarv
