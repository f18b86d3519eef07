#include "platform/forms/DataGridDelegate.h"

#include <algorithm>
#include <cmath>

#include "platform/forms/DataGridModel.h"

namespace quarv::forms {

namespace {

constexpr int RowAir = 6;

QPalette::ColorGroup GroupOf(QStyle::State state) {
    if (!(state & QStyle::State_Enabled)) return QPalette::Disabled;
    return state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

}  // namespace

DataGridDelegate::DataGridDelegate(QWidget* grid, const DataGridModel& model)
    : QStyledItemDelegate(grid), model_(model), fonts_(grid->font()) {}

void DataGridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    // A character takes a pixel at least; a text that is cut is to be seen as such.
    const qint64 units = std::min<qint64>(ShownLimit.units, option.rect.width() + 1);
    const CellLimit limit{std::max<qint64>(units, 1), ShownLimit.bytes};
    const CellStart cell = model_.StartOf(index.row(), index.column(), limit.Most());
    const QStyle::State state = option.state;
    const DataCellState look{ShownCell(cell, limit),
                             LookOf(cell.value),
                             state.testFlag(QStyle::State_Selected),
                             state.testFlag(QStyle::State_HasFocus),
                             option.direction == Qt::RightToLeft,
                             GroupOf(state)};
    PaintDataCell(*painter, option.rect, look, fonts_, option.palette);
}

int DataGridDelegate::RowHeight() const {
    return static_cast<int>(std::ceil(fonts_.fitter.Height())) + RowAir;
}

QSize DataGridDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const {
    const QString text = ShownCell(model_.StartOf(index.row(), index.column(), ShownLimit.Most()));
    const double width = std::max(fonts_.fitter.Width(text), fonts_.nullFitter.Width(text));
    // One more for the line between the cells.
    return {static_cast<int>(std::ceil(width)) + 2 * CellMargin + 1, RowHeight()};
}

}  // namespace quarv::forms
