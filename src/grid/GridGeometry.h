// GridGeometry: where the parts, lines and cells of a grid lie. All lengths in twips from the
// control's top left corner. It depends on metrics and size alone and knows neither rows nor fonts.
#pragma once

#include <QRectF>

#include "grid/KelEditGridColumnList.h"

namespace quarv {

// What the geometry is told of fonts and platform, in twips.
struct GridMetrics {
    double textHeight = 0;    // of the text "A" in the control's font
    double editorHeight = 0;  // of the text editor
    double barWidth = 0;      // of the vertical scroll bar
    double barHeight = 0;     // of the horizontal scroller
};

class GridGeometry {
  public:
    // The row-marker band left of the first column.
    static constexpr qint16 LeftMargin = 300;
    // Answers of RowHit beside list positions.
    static constexpr qint32 HeaderBand = 0;
    static constexpr qint32 AddRowLine = -1;
    static constexpr qint32 BelowAll = -2;

    explicit GridGeometry(const GridMetrics& metrics);

    // Also computes how many rows fit. The heights of header and rows never change.
    void Resize(double width, double height);

    double Width() const { return width_; }
    double Height() const { return height_; }
    double BarWidth() const { return barWidth_; }
    qint32 HeaderHeight() const { return headerHeight_; }
    qint32 RowHeight() const { return rowHeight_; }
    // Whole rows below the header; the horizontal scroller deliberately takes nothing off, so that
    // the last one may lie partly under it. 0 or less where the header fills the control. Raises
    // Overflow beyond 16 bits.
    qint16 RowsThatFit() const { return rowsThatFit_; }
    // Lines that show at least in part; never below 0.
    int LinesShown() const;

    // Below the visible area.
    double FocusTakerTop() const { return height_ + 500; }
    // Keeps its former height where the control is no higher than its header.
    QRectF VerticalBar() const { return verticalBar_; }
    QRectF HorizontalBar() const;

    // The line of the data area, counted from 0, as a rectangle over one column.
    QRectF Cell(const KelEditGridColumn& column, qint32 offset, int line) const;

    // `lines` are drawn, the first of them the row numbered `topVisible` among the visible ones: a
    // list position (the visible number, deliberately used as it stands), HeaderBand, AddRowLine or
    // BelowAll.
    qint32 RowHit(double y, int lines, qint16 topVisible) const;
    // 0 left of the first column, else the column's position, -1 where there is none. The
    // horizontal offset is deliberately not added.
    static qint16 ColumnHit(double x, const KelEditGridColumnList& columns);

  private:
    qint32 headerHeight_;
    qint32 rowHeight_;
    double barWidth_;
    double barHeight_;
    double width_ = 0;
    double height_ = 0;
    qint16 rowsThatFit_ = 0;
    QRectF verticalBar_;
};

}  // namespace quarv
