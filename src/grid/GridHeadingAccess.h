// GridHeadingAccess: what assistive tools see of the heading of a grid's column. Its owner is as
// that of every GridPartAccess; it knows no cells.
#pragma once

#include "grid/GridPartAccess.h"

namespace quarv {

class GridHeadingAccess : public GridPartAccess {
  public:
    // The column counted from 0.
    GridHeadingAccess(KelEditGridAccess& table, int column)
        : GridPartAccess(table, Headings, column) {}

    QAccessible::Role role() const override { return QAccessible::ColumnHeader; }

  protected:
    QString Name() const override { return ColumnInfo()->Name; }
};

}  // namespace quarv
