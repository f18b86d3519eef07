#include "grid/GridGeometry.h"

#include <algorithm>
#include <cmath>

#include "base/NumberText.h"
#include "grid/Checked32.h"

namespace quarv {

namespace {

constexpr double HeaderAir = 1.25;

// To the nearest integer, halves to even.
qint32 Rounded(double twips) {
    return Narrow32(RoundToInteger(twips));
}

}  // namespace

GridGeometry::GridGeometry(const GridMetrics& metrics)
    : headerHeight_(Rounded(metrics.textHeight * HeaderAir)),
      rowHeight_(std::max(1, Rounded(metrics.editorHeight))),
      barWidth_(metrics.barWidth),
      barHeight_(metrics.barHeight) {}

void GridGeometry::Resize(double width, double height) {
    width_ = width;
    height_ = height;
    verticalBar_.moveTo(width - barWidth_, headerHeight_);
    verticalBar_.setWidth(barWidth_);
    if (height > headerHeight_)
        verticalBar_.setHeight(std::max(0.0, height - headerHeight_ - barHeight_));
    rowsThatFit_ = Narrow16(Rounded(height - headerHeight_) / rowHeight_);
}

int GridGeometry::LinesShown() const {
    return std::max(0, static_cast<int>(std::ceil((height_ - headerHeight_) / rowHeight_)));
}

QRectF GridGeometry::HorizontalBar() const {
    return {0, height_ - barHeight_, std::max(0.0, width_ - barWidth_), barHeight_};
}

QRectF GridGeometry::Cell(const KelEditGridColumn& column, qint32 offset, int line) const {
    return {static_cast<double>(LeftMargin) + column.Left - offset,
            headerHeight_ + static_cast<double>(line) * rowHeight_,
            static_cast<double>(column.Width), static_cast<double>(rowHeight_)};
}

qint32 GridGeometry::RowHit(double y, int lines, qint16 topVisible) const {
    if (y < headerHeight_) return HeaderBand;
    if (y < headerHeight_ + static_cast<double>(lines) * rowHeight_)
        return Add16(Narrow16(Rounded(y - headerHeight_) / rowHeight_), topVisible);
    if (y < headerHeight_ + (lines + 1.0) * rowHeight_) return AddRowLine;
    return BelowAll;
}

qint16 GridGeometry::ColumnHit(double x, const KelEditGridColumnList& columns) {
    if (x < LeftMargin) return 0;
    return columns.FindFromX(Rounded(x - LeftMargin));
}

}  // namespace quarv
