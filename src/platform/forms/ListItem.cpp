#include "platform/forms/ListItem.h"

#include "base/RuntimeError.h"
#include "platform/forms/ListModel.h"

namespace quarv::forms {

void ListItem::SetText(const QString& text) {
    text_ = text;
    model_.ItemChanged(row_, 0);
}

QString ListItem::SubItem(int column) const {
    if (column < 1 || column >= model_.columnCount())
        throw RuntimeError(RuntimeError::InvalidPropertyValue);
    const auto at = static_cast<size_t>(column - 1);
    return at < subItems_.size() ? subItems_[at] : QString();
}

void ListItem::SetSubItem(int column, const QString& text) {
    if (column < 1 || column >= model_.columnCount())
        throw RuntimeError(RuntimeError::InvalidPropertyValue);
    const auto at = static_cast<size_t>(column - 1);
    if (at >= subItems_.size()) subItems_.resize(at + 1);
    subItems_[at] = text;
    model_.ItemChanged(row_, column);
}

}  // namespace quarv::forms
