#include "platform/forms/RowDelegate.h"

namespace quarv::forms {

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, air_);
}

}  // namespace quarv::forms
