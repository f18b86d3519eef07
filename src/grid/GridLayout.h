// GridLayout: which rows and columns of a grid are in view: the first row, the scroll bars' ranges,
// the lines to draw. It moves the view and never selects or writes a cell. The control owns it.
#pragma once

#include "grid/CellEditors.h"
#include "grid/GridGeometry.h"
#include "grid/GridScreen.h"
#include "grid/GridState.h"

namespace quarv {

class GridLayout {
  public:
    // All outlive the layout.
    GridLayout(GridState& state, GridGeometry& geometry, GridScreen& screen, CellEditors& editors);

    // The control has this size in twips now; its parts are placed already.
    void Resize();

    // Raise ObjectNotSet for no list.
    void SetColList(ColumnListRef columns);
    // The row at position 1 becomes the first one shown, deleted or not.
    void SetRowList(RowListRef rows);

    // Numbers the visible rows and shows the vertical bar where they do not all fit. A first row
    // that is gone is replaced.
    void NumVisibleMayHaveChanged();
    // Lays the columns out anew, scrolled to the left end. Raises Overflow where their widths do
    // not add up within 32 bits.
    void SetWidths();
    // Repairs the first row shown after the host has changed the rows.
    void DataHasChanged();

    // Every row numbered `value` becomes the first one shown, the last of them wins: a deleted row
    // keeps the number it had and may be it. Hides the editors where there is one.
    void ShowFrom(qint16 value);
    // `row`, at `position` of the list, becomes the first one shown.
    void SetTopRow(const RowRef& row, qint16 position);
    // The vertical bar follows the first row shown.
    void FollowTopRow();
    // Where no row is shown first, or one that is deleted or gone, another takes its place: the
    // next visible one, else the one before.
    void RepairTopRow();
    // As RepairTopRow, but leaves a deleted row where it is. True where another row is first now.
    bool ReplaceLostTopRow();
    // A row out of view becomes the first one shown.
    void BringRowIntoView(const RowRef& row, qint16 position);

    // Collects the lines to draw and asks for painting.
    void Redraw();
    // The line of the data area that shows the row; where the last redraw drew it nowhere, the one
    // that its number puts it on.
    int LineOf(const KelEditGridRow& row) const;

    // To an offset that the scroller has left, twips.
    void ScrollBack(qint32 offset);

    // What is drawn at a point, twips from the control's corner: a cell, or a column's heading
    // where there is no row, or nothing.
    struct DrawnCell {
        RowRef row;
        ColumnRef column;
        qint16 position = 0;  // of the column
    };
    DrawnCell CellAt(double x, double y) const;

    // Scrolls aside as far as the column needs to be seen, its left end before its right one. True
    // where that moved the view.
    bool BringIntoView(const KelEditGridColumn& column);

    // Hides the editors; no column is edited any more.
    void HideEditors();

  private:
    // The visible row nearest to a list position, first those behind it, becomes the first one
    // shown; nothing changes where there is none.
    void ShowNear(qint16 position);
    // In the row list, 1-based; -1 where the first row shown is not in it.
    qint16 TopPosition();

    GridState& state_;
    GridGeometry& geometry_;
    GridScreen& screen_;
    CellEditors& editors_;
    qint16 topPosition_ = 0;  // where the first row was seen last
};

}  // namespace quarv
