// RowDelegate: paints the cells of lists, trees and drop-down lists with some air between the rows.
#pragma once

#include <QStyledItemDelegate>

namespace quarv::forms {

class RowDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    // `air` pixels are added to the height that the style gives a row.
    RowDelegate(QObject* view, int air) : QStyledItemDelegate(view), air_(air) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    int air_;
};

}  // namespace quarv::forms
