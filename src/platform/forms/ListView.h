// ListView: rows of texts under titled columns (report view). It paints what is visible from its
// model; there is no object per row or cell beyond the row's texts.
#pragma once

#include <QTreeView>

#include "platform/forms/ColumnHeader.h"
#include "platform/forms/Control.h"
#include "platform/forms/ListItem.h"

namespace quarv::forms {

class ListModel;
class ListView;

// The columns of a list, 1-based.
class ColumnHeaders {
  public:
    // Appends; `width` in twips.
    void Add(const QString& key, const QString& text, double width,
             ColumnAlignment alignment = ColumnAlignment::Left);
    int Count() const;
    // Raises SubscriptOutOfRange outside the list.
    const ColumnHeader& Item(int index) const;

  private:
    friend class ListView;
    explicit ColumnHeaders(ListView& view) : view_(view) {}
    ListView& view_;
};

// The rows of a list, 1-based.
class ListItems {
  public:
    // Appends. The reference holds until Clear. A key that is taken (in any letter case) raises
    // KeyNotUnique; rows without one have the key "".
    ListItem& Add(const QString& key, const QString& text);
    int Count() const;
    // Raise SubscriptOutOfRange outside the list, ElementNotFound for an unknown key.
    ListItem& Item(int index) const;
    ListItem& Item(const QString& key) const;
    void Clear();

  private:
    friend class ListView;
    explicit ListItems(ListModel& model) : model_(model) {}
    ListModel& model_;
};

class ListView : public QTreeView, public Control {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES

  public:
    ListView(QWidget* container, const QString& name);

    forms::ColumnHeaders& ColumnHeaders() { return columns_; }
    forms::ListItems& ListItems() { return items_; }
    // Null where no row is selected.
    ListItem* SelectedItem() const;

  Q_SIGNALS:
    // A row was clicked, or Enter or Space pressed on it.
    void ItemClick(quarv::forms::ListItem* item);

  protected:
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    friend class forms::ColumnHeaders;
    void RaiseItemClick(const QModelIndex& index);

    ListModel* model_;
    forms::ColumnHeaders columns_;
    forms::ListItems items_;
};

}  // namespace quarv::forms
