// BareClick: what a click on a table costs at least: nothing but the ODBC calls that ask for its
// columns, its indexes, its primary key and its first rows, each read to the end, and a plain table
// view in a window of its own that paints the rows' cells.
#pragma once

#include <QTableView>

#include "BareConnection.h"
#include "TextModel.h"
#include "grid/KelEditGrid.h"

namespace quarv::bench {

class BareClick {
  public:
    // `grid` shows the table whose cells are to be painted. Its look and texts are taken over here.
    BareClick(const QByteArray& connectionString, const KelEditGrid& grid);

    // How many rows of the table there were.
    int Run(const QByteArray& table);

  private:
    void PlaceCells(const KelEditGrid& grid);

    BareConnection connection_;
    TextModel texts_;
    QWidget window_;
    QTableView view_{&window_};
};

}  // namespace quarv::bench
