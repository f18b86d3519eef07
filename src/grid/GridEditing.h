// GridEditing: selects a row, lays one editor over one cell, writes the edited value back, adds and
// deletes rows with the host's help. It answers what the mouse and the keyboard meant; the control
// owns it and translates them. It knows no widget.
#pragma once

#include "grid/GridHost.h"
#include "grid/GridLayout.h"

namespace quarv {

class GridEditing {
  public:
    // All outlive the editing.
    GridEditing(GridState& state, GridGeometry& geometry, GridLayout& layout, CellEditors& editors,
                GridHost& host);

    // Writes the edited cell back and tells the host; nothing without one.
    void Commit();
    // A new row that is still empty is dropped; one that is not becomes an ordinary row.
    void LeaveAddRowMode();
    void CommitAnyChanges();
    // Selects the add-row line, so that the host is asked for a new row, and presses the button of
    // its first cell where `activateHelper` says so and there is one. Gives the current row;
    // nothing where the host refused, and then none is selected. Raises Overflow where the list is
    // full. What was being typed elsewhere is deliberately not written.
    RowRef AddRowMode(bool& activateHelper);
    // Tells the host and removes the current row; nothing without one.
    void DeleteCurrentRow();
    // Nothing is selected any more; rows and columns are laid out anew.
    void ChangeToSetup();

    // Selects the row at list position `p`, or asks the host for a new one where `p` is
    // GridGeometry::AddRowLine, and edits its column `c`, none where that is 0 or less. Beyond the
    // list nothing happens. False where no row is selected then. Raises SubscriptOutOfRange or
    // Overflow for other positions.
    bool Select(qint32 p, qint16 c);
    // What a click on column `c` of the row at `p` does: commits, leaves add-row mode where it is
    // another row, selects.
    void Enter(qint32 p, qint16 c);

    // As Enter, and the cell is brought into view.
    void EnterInView(qint32 p, qint16 c);

    // A mouse button was released, twips from the control's top left corner.
    void Release(double x, double y);
    // Drops an empty new row; in an ordinary row undoes the typing.
    void Escape();
    // To the next cell of the row. In the last one to the row below, and what was typed there is
    // deliberately not written.
    void EnterKey();
    void PressElipsis();

    // Scrolls aside to the edited cell, where the keyboard went out of view.
    void Reveal();
    // Lays the columns out anew, scrolled to the left end, and an open editor with them.
    void SetWidths();

    // The vertical bar stands at `value` now.
    void ScrollVertically(qint16 value);
    // The horizontal scroller stands at `value` twips now.
    void ScrollHorizontally(qint32 value);

  private:
    bool SelectNewRow(qint16 c);
    void SelectRow(qint16 p);
    void Deselect();
    void DropNewRow();
    void Place(qint16 c);
    // Where the cell is drawn now, twips from the control's top left corner.
    QRectF PlaceOf(const KelEditGridColumn& column, const KelEditGridRow& row) const;
    // The column being edited; nothing where there is none.
    ColumnRef CurrentColumn() const;
    void Browse(ColumnRef column);
    void AskHost(ColumnRef column);

    GridState& state_;
    GridGeometry& geometry_;
    GridLayout& layout_;
    CellEditors& editors_;
    GridHost& host_;
    bool committing_ = false;
};

}  // namespace quarv
