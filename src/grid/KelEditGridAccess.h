// KelEditGridAccess: what assistive tools see of a KelEditGrid: a table of the rows that are not
// deleted under a line of headings, with the edited cell as what is selected. Cells and headings
// are made when they are asked for. Qt's accessibility makes and owns it; it decides nothing, and
// reads the grid's state each time it is asked.
#pragma once

#include <QAccessibleWidget>
#include <optional>

#include "grid/GridPartCache.h"
#include "grid/GridRowNumbers.h"
#include "grid/GridShape.h"
#include "grid/GridTeller.h"

namespace quarv {

class KelEditGrid;

class KelEditGridAccess : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit KelEditGridAccess(KelEditGrid* grid);

    // Makes Qt ask for this view of every KelEditGrid, and for that of its text boxes. Calling it
    // again changes nothing.
    static void Install();
    // The grid's rows, columns or current cell may be others now. Tells what is different, once
    // the event being handled is over; nothing where no tool listens.
    static void NoteChange(KelEditGrid& grid);
    // The grid itself has the keyboard now, and no editor of it.
    static void NoteFocus(KelEditGrid& grid);

    // Null once the grid is being destroyed.
    KelEditGrid* Grid() const;
    // The parts that it gave are those of the rows and columns that the grid has now.
    bool HoldsParts() const;
    // The cell, or the heading where `row` is GridPartAccess::Headings; null outside the table.
    // Columns and visible rows are counted from 0.
    GridPartAccess* Part(int row, int column) const;
    // The row numbered so among the visible ones; nothing where there is none.
    RowRef RowOf(int row) const;
    // Of the current cell; -1 where none is.
    int CurrentRow() const;
    int CurrentColumn() const;
    // The controls that lie over the current cell.
    QList<QWidget*> EditorParts() const;
    // Where a part is drawn, on the screen; empty where it is not.
    QRect PlaceOf(int row, int column) const;
    // Does what a click on the cell would do; left of the first column where `column` is -1.
    void Enter(int row, int column);

    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    // The headings, then the cells row by row.
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    // The editor over the current cell, else the cell.
    QAccessibleInterface* focusChild() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int rowCount() const override;
    int columnCount() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int) const override { return {}; }

    // The cell being edited and the current row are selected, columns never.
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override;
    // Does what a click left of the row would do, unless it is the current one already.
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

  private:
    static KelEditGridAccess* Of(KelEditGrid& grid);
    GridShape CurrentShape() const;
    qint16 PositionOf(int row) const;
    // The row shown at y pixels of the grid, or Headings; nothing else has columns.
    std::optional<int> RowAt(int y) const;
    void Later() const;
    void TellChanges();

    // Filled on demand, by questions too.
    mutable GridPartCache parts_;
    mutable GridRowNumbers numbers_;
    mutable GridShape partsShape_;  // that parts_ were made for
    mutable bool waiting_ = false;
    GridTeller teller_;
};

}  // namespace quarv
