#include "platform/forms/DataGridModel.h"

#include <algorithm>

#include "base/Error.h"
#include "platform/forms/DataCellText.h"
#include "platform/forms/ItemText.h"

namespace quarv::forms {

void DataGridModel::SetSource(const RowSource* source) {
    beginResetModel();
    source_ = source;
    fields_ = source == nullptr ? QStringList() : source->Fields();
    rows_ = RowsRead();
    endResetModel();
}

void DataGridModel::ShowRowsRead() {
    const int read = RowsRead();
    if (read <= rows_) return;
    beginInsertRows({}, rows_, read - 1);
    rows_ = read;
    endInsertRows();
}

int DataGridModel::RowsRead() const {
    if (source_ == nullptr || fields_.isEmpty()) return 0;
    return static_cast<int>(std::min<qint64>(source_->RowCount(), MostRows));
}

CellStart DataGridModel::StartOf(int row, int column, qint64 most) const {
    try {
        return source_->StartOf(row, column, most);
    } catch (const quarv::Error&) {
        return {Value(), 0};
    }
}

QString DataGridModel::ColumnName(int column) const {
    const QString& name = fields_.at(column);
    return name.isEmpty() ? QStringLiteral("(No column name)") : ShownText(name);
}

int DataGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int DataGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(fields_.size());
}

QVariant DataGridModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    switch (role) {
        case Qt::DisplayRole:
            return ShownCell(StartOf(index.row(), index.column(), ShownLimit.Most()));
        case Qt::ToolTipRole:
            return PlainToolTip(
                ToolTipOfCell(StartOf(index.row(), index.column(), ToolTipLimit.Most())));
        default:
            return {};
    }
}

QVariant DataGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool row = orientation == Qt::Vertical;
    if (section < 0 || section >= (row ? rowCount() : columnCount())) return {};
    switch (role) {
        case Qt::DisplayRole:
            return row ? QString::number(section + 1) : ColumnName(section);
        case Qt::TextAlignmentRole:
            return QVariant((row ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
        case Qt::ToolTipRole:
            return row ? QVariant() : PlainToolTip(fields_.at(section));
        default:
            return {};
    }
}

}  // namespace quarv::forms
