#include "grid/GridShape.h"

#include <algorithm>

namespace quarv {

GridShape::GridShape(const GridState& state)
    : rows_(state.rows),
      columns_(state.columns),
      rowCount_(std::min(state.visibleRows, state.rows->Count())),
      columnCount_(state.columns->Count()) {}

bool GridShape::IsThatOf(const GridState& state) const {
    const GridShape now(state);
    return rows_.lock() == state.rows && columns_.lock() == state.columns &&
           rowCount_ == now.rowCount_ && columnCount_ == now.columnCount_;
}

}  // namespace quarv
