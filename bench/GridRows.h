// GridRows: rows and columns of text for the grid's bench, and the same texts as a table model.
// Their texts repeat, so that grids scrolled by whole repetitions show the same.
#pragma once

#include <QAbstractTableModel>
#include <memory>

#include "grid/KelEditGridColumnList.h"
#include "grid/KelEditGridRowList.h"

namespace quarv::bench {

// How many rows have texts of their own before they repeat.
constexpr int TextPeriod = 50;

// `width` in twips.
ColumnListRef MakeColumns(int count, qint32 width);
RowListRef MakeRows(int count, int columns);

// How many cells were read from all rows of this process.
int CellsRead();

class TextTable : public QAbstractTableModel {
  public:
    TextTable(int rows, int columns);

    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    // The names of columns; rows have none, as in the grid.
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // How many texts were read.
    int CellsRead() const { return cellsRead_; }

  private:
    int rows_;
    int columns_;
    QList<QList<QString>> texts_;
    mutable int cellsRead_ = 0;
};

}  // namespace quarv::bench
