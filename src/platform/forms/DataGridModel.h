// DataGridModel: the rows of a RowSource that were read so far, for a DataGrid, which owns it. It
// reads nothing on and knows no widget.
#pragma once

#include <QAbstractTableModel>

#include "base/RowSource.h"

namespace quarv::forms {

class DataGridModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    // Their heights together must be an int.
    static constexpr int MostRows = 50'000'000;

    explicit DataGridModel(QObject* grid) : QAbstractTableModel(grid) {}

    // Not owned; null shows nothing. The same source again shows what it holds now.
    void SetSource(const RowSource* source);
    // Tells the view of the rows read since, in one go.
    void ShowRowsRead();

    // As RowSource::StartOf, but empty where the source no longer has such a cell.
    CellStart StartOf(int row, int column, qint64 most) const;
    // As in the header: never empty, on one line.
    QString ColumnName(int column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    int RowsRead() const;

    const RowSource* source_ = nullptr;
    QStringList fields_;
    int rows_ = 0;  // that the view was told of
};

}  // namespace quarv::forms
