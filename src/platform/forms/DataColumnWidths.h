// DataColumnWidths: how wide the columns of a DataGrid are at first, from their names and the first
// rows. A free function; it knows the grid's model and no widget.
#pragma once

#include <vector>

#include "platform/drawing/TextFitter.h"

namespace quarv::forms {

class DataGridModel;

inline constexpr int LeastColumnWidth = 40;
inline constexpr int MostColumnWidth = 300;

// Pixels, a column each. `headingMargin` is what a name leaves free at both of its sides together.
// Of many columns fewer rows are looked at, so that the work is bounded.
std::vector<int> DataColumnWidths(const DataGridModel& model, const drawing::TextFitter& cells,
                                  const drawing::TextFitter& headings, int headingMargin);

}  // namespace quarv::forms
