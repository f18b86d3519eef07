#include "platform/forms/RowNumberHeader.h"

#include <QStyle>
#include <algorithm>

namespace quarv::forms {

namespace {

constexpr int FewestDigits = 2;

}  // namespace

RowNumberHeader::RowNumberHeader(QWidget* grid) : QHeaderView(Qt::Vertical, grid) {
    setSectionResizeMode(QHeaderView::Fixed);
    setSectionsClickable(true);
    setHighlightSections(false);
}

void RowNumberHeader::SetRowHeight(int height) {
    setMinimumSectionSize(height);
    setDefaultSectionSize(height);
}

QSize RowNumberHeader::sizeHint() const {
    int digits = 1;
    for (int rows = count(); rows >= 10; rows /= 10) ++digits;
    const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    const int digit = fontMetrics().horizontalAdvance(u'0');
    return {std::max(digits, FewestDigits) * digit + 4 * margin, 0};
}

}  // namespace quarv::forms
