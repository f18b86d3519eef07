// DataGridDelegate: brings the cells of a DataGrid, which owns it, from its model to the painter of
// cells. It asks the model for no more of a cell than its column can show.
#pragma once

#include <QStyledItemDelegate>

#include "platform/forms/DataCellPainter.h"

namespace quarv::forms {

class DataGridModel;

class DataGridDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    DataGridDelegate(QWidget* grid, const DataGridModel& model);

    void SetFont(const QFont& font) { fonts_ = DataCellFonts(font); }
    const drawing::TextFitter& Fitter() const { return fonts_.fitter; }
    // In pixels, for all rows.
    int RowHeight() const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    // As wide as the whole text that is ever shown.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    const DataGridModel& model_;
    DataCellFonts fonts_;
};

}  // namespace quarv::forms
