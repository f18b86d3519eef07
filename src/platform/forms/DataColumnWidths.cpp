#include "platform/forms/DataColumnWidths.h"

#include <algorithm>
#include <cmath>

#include "platform/forms/DataCellPainter.h"
#include "platform/forms/DataGridModel.h"

namespace quarv::forms {

namespace {

constexpr int MostRowsLookedAt = 100;
constexpr int MostCellsLookedAt = 10'000;
// About as many units fill the widest column; more need not be measured.
constexpr CellLimit Measured{100, ShownLimit.bytes};

double WidestCell(const DataGridModel& model, int column, int rows,
                  const drawing::TextFitter& fitter) {
    double widest = 0;
    for (int row = 0; row < rows && widest < MostColumnWidth; ++row) {
        const CellStart cell = model.StartOf(row, column, Measured.Most());
        widest = std::max(widest, fitter.Width(ShownCell(cell, Measured)));
    }
    return widest;
}

}  // namespace

std::vector<int> DataColumnWidths(const DataGridModel& model, const drawing::TextFitter& cells,
                                  const drawing::TextFitter& headings, int headingMargin) {
    const int columns = model.columnCount();
    const int rows = std::min({model.rowCount(), MostRowsLookedAt,
                               std::max(1, MostCellsLookedAt / std::max(1, columns))});
    std::vector<int> widths;
    widths.reserve(static_cast<std::size_t>(columns));
    for (int column = 0; column < columns; ++column) {
        const QString name = model.ColumnName(column).left(Measured.units);
        const double heading = headings.Width(name) + headingMargin;
        const double cell = WidestCell(model, column, rows, cells) + 2 * CellMargin + 1;
        widths.push_back(std::clamp(static_cast<int>(std::ceil(std::max(heading, cell))),
                                    LeastColumnWidth, MostColumnWidth));
    }
    return widths;
}

}  // namespace quarv::forms
