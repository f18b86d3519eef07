// GridPartAccess: what a cell and a heading of a grid have in common for assistive tools: a place
// in the table, and an end once the table holds other rows or columns. The table's GridPartCache
// makes it known to Qt, whose accessibility owns it; it never outlives the table's own view.
#pragma once

#include <QAccessibleInterface>

#include "grid/GridState.h"

namespace quarv {

class KelEditGrid;
class KelEditGridAccess;

class GridPartAccess : public QAccessibleInterface {
  public:
    // The row of the headings.
    static constexpr int Headings = -1;

    // Both counted from 0, the row among the visible ones.
    GridPartAccess(KelEditGridAccess& table, int row, int column)
        : table_(table), row_(row), column_(column) {}

    KelEditGridAccess& Table() const { return table_; }
    int Row() const { return row_; }
    int Column() const { return column_; }
    // From now on it is invalid and answers nothing.
    void Retire() { retired_ = true; }

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    // On the screen, as far as it is drawn; empty where it is not.
    QRect rect() const override;
    // Nothing but the name, and nothing at all once invalid.
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QAccessible::State state() const override;

  protected:
    virtual QString Name() const = 0;
    // Null once invalid.
    KelEditGrid* Grid() const;
    // The description of its column; only while valid.
    ColumnRef ColumnInfo() const;

  private:
    KelEditGridAccess& table_;
    int row_;
    int column_;
    bool retired_ = false;
};

}  // namespace quarv
