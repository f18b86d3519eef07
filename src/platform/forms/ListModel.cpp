#include "platform/forms/ListModel.h"

#include "base/RuntimeError.h"
#include "platform/forms/ItemText.h"

namespace quarv::forms {

namespace {

Qt::Alignment QtAlignment(ColumnAlignment alignment) {
    static constexpr Qt::AlignmentFlag Sides[] = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
    return Sides[static_cast<int>(alignment)] | Qt::AlignVCenter;
}

}  // namespace

void ListModel::AddColumn(const ColumnHeader& column) {
    const auto position = static_cast<int>(columns_.size());
    beginInsertColumns({}, position, position);
    columns_.push_back(column);
    endInsertColumns();
}

ListItem& ListModel::AddItem(const QString& key, const QString& text) {
    const auto row = static_cast<int>(items_.size());
    if (!key.isEmpty()) {
        const QString folded = FoldKey(key);
        if (rows_.contains(folded)) throw RuntimeError(RuntimeError::KeyNotUnique, key);
        rows_.insert(folded, row);
    }
    items_.emplace_back(*this, row, key, text);
    if (!flushPending_) {
        flushPending_ = true;
        QMetaObject::invokeMethod(
            this, [this] { Flush(); }, Qt::QueuedConnection);
    }
    return items_.back();
}

ListItem* ListModel::Find(const QString& key) {
    const auto found = key.isEmpty() ? rows_.constEnd() : rows_.constFind(FoldKey(key));
    return found == rows_.constEnd() ? nullptr : &Item(*found);
}

void ListModel::Clear() {
    beginResetModel();
    items_.clear();
    rows_.clear();
    known_ = 0;
    endResetModel();
}

void ListModel::ItemChanged(int row, int column) {
    if (row >= known_) return;
    const QModelIndex changed = index(row, column);
    Q_EMIT dataChanged(changed, changed);
}

void ListModel::Flush() {
    flushPending_ = false;
    const auto count = static_cast<int>(items_.size());
    if (known_ == count) return;
    beginInsertRows({}, known_, count - 1);
    known_ = count;
    endInsertRows();
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : known_;
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const ListItem& item = items_[static_cast<size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
            return ShownText(index.column() == 0 ? item.Text() : item.SubItem(index.column()));
        case WholeTextRole:
            return index.column() == 0 ? item.Text() : item.SubItem(index.column());
        case Qt::TextAlignmentRole:
            return QVariant(QtAlignment(columns_[static_cast<size_t>(index.column())].alignment));
        default:
            return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    const ColumnHeader& column = columns_[static_cast<size_t>(section)];
    if (role == Qt::DisplayRole) return ShownText(column.text);
    if (role == Qt::TextAlignmentRole) return QVariant(QtAlignment(column.alignment));
    return {};
}

}  // namespace quarv::forms
