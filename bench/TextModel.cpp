#include "TextModel.h"

namespace quarv::bench {

TextModel::TextModel(QStringList names, QStringList texts)
    : names_(std::move(names)), texts_(std::move(texts)) {}

std::unique_ptr<TextModel> TextModel::Of(const QAbstractItemModel& from) {
    QStringList names, texts;
    for (int column = 0; column < from.columnCount(); ++column)
        names << from.headerData(column, Qt::Horizontal).toString();
    for (int row = 0; row < from.rowCount(); ++row)
        for (int column = 0; column < from.columnCount(); ++column)
            texts << from.index(row, column).data().toString();
    return std::make_unique<TextModel>(std::move(names), std::move(texts));
}

void TextModel::Renew() {
    beginResetModel();
    endResetModel();
}

int TextModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(texts_.size() / names_.size());
}

int TextModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(names_.size());
}

QVariant TextModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole) return {};
    return texts_.at(index.row() * names_.size() + index.column());
}

QVariant TextModel::headerData(int section, Qt::Orientation side, int role) const {
    if (role != Qt::DisplayRole) return {};
    return side == Qt::Horizontal ? names_.at(section) : QString::number(section + 1);
}

}  // namespace quarv::bench
