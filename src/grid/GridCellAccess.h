// GridCellAccess: what assistive tools see of one cell of a grid: its text or tick, its headings,
// the editor over it. It is a place, not a value: it reads the row each time it is asked, and what
// the row raises is reported and leaves the answer empty. Its owner is as that of every
// GridPartAccess.
#pragma once

#include "grid/GridPartAccess.h"

namespace quarv {

class GridCellAccess : public GridPartAccess,
                       public QAccessibleTableCellInterface,
                       public QAccessibleActionInterface {
  public:
    // UTF-16 units of its text that are told at most.
    static constexpr qsizetype MostUnits = 20'000;

    // Both counted from 0, the row among the visible ones.
    GridCellAccess(KelEditGridAccess& table, int row, int column)
        : GridPartAccess(table, row, column) {}

    // A check box in a column of check boxes.
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    // The editor and its button, while they lie over this cell.
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* focusChild() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // It is the cell being edited.
    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return Column(); }
    int rowIndex() const override { return Row(); }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

    // "Press" enters the cell, as a click does; in a disabled grid nothing is offered.
    QStringList actionNames() const override;
    void doAction(const QString& action) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  protected:
    // Of a tick the heading, as a check box is called.
    QString Name() const override;

  private:
    // Nothing where the row raises.
    Value Content() const;
};

}  // namespace quarv
