// ListModel: the columns and rows of a ListView, which owns it. New rows are told to the view in
// one go, once events are handled again, so that filling a list lays nothing out row by row. It
// knows no widget.
#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <deque>
#include <vector>

#include "platform/forms/ColumnHeader.h"
#include "platform/forms/ListItem.h"

namespace quarv::forms {

class ListModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    explicit ListModel(QObject* view) : QAbstractTableModel(view) {}

    void AddColumn(const ColumnHeader& column);
    const std::vector<ColumnHeader>& Columns() const { return columns_; }

    // Raises KeyNotUnique where the key, if any, is taken in any letter case.
    ListItem& AddItem(const QString& key, const QString& text);
    const std::deque<ListItem>& Items() const { return items_; }
    ListItem& Item(int row) { return items_[static_cast<size_t>(row)]; }
    // Null where no row has this key.
    ListItem* Find(const QString& key);
    void Clear();
    void ItemChanged(int row, int column);
    // Tells the view of the rows that it does not know yet.
    void Flush();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::vector<ColumnHeader> columns_;
    std::deque<ListItem> items_;
    QHash<QString, int> rows_;  // by folded key
    int known_ = 0;             // rows that the view was told of
    bool flushPending_ = false;
};

}  // namespace quarv::forms
