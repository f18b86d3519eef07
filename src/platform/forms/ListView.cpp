#include "platform/forms/ListView.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>

#include "base/RuntimeError.h"
#include "platform/forms/Application.h"
#include "platform/forms/ItemText.h"
#include "platform/forms/KeyPress.h"
#include "platform/forms/ListModel.h"
#include "platform/forms/RowDelegate.h"
#include "platform/forms/Twips.h"

namespace quarv::forms {

namespace {

constexpr int RowAir = 6;

}  // namespace

void ColumnHeaders::Add(const QString& key, const QString& text, double width,
                        ColumnAlignment alignment) {
    view_.model_->AddColumn({key, text, width, alignment});
    view_.header()->resizeSection(Count() - 1, ToPixels(width));
}

int ColumnHeaders::Count() const {
    return view_.model_->columnCount();
}

const ColumnHeader& ColumnHeaders::Item(int index) const {
    if (index < 1 || index > Count()) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return view_.model_->Columns()[static_cast<size_t>(index - 1)];
}

ListItem& ListItems::Add(const QString& key, const QString& text) {
    return model_.AddItem(key, text);
}

int ListItems::Count() const {
    return static_cast<int>(model_.Items().size());
}

ListItem& ListItems::Item(int index) const {
    if (index < 1 || index > Count()) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return model_.Item(index - 1);
}

ListItem& ListItems::Item(const QString& key) const {
    ListItem* item = model_.Find(key);
    if (item == nullptr) throw RuntimeError(RuntimeError::ElementNotFound, key);
    return *item;
}

void ListItems::Clear() {
    model_.Clear();
}

ListView::ListView(QWidget* container, const QString& name)
    : QTreeView(container),
      Control(this, container, name),
      model_(new ListModel(this)),
      columns_(*this),
      items_(*model_) {
    setModel(model_);
    setItemDelegate(new RowDelegate(this, RowAir));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    setTabKeyNavigation(false);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setSectionResizeMode(QHeaderView::Interactive);
    RefreshSpokenName();
    connect(this, &QTreeView::clicked, this, &ListView::RaiseItemClick);
}

ListItem* ListView::SelectedItem() const {
    const QModelIndex current = selectionModel()->currentIndex();
    return current.isValid() ? &model_->Item(current.row()) : nullptr;
}

bool ListView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        ShowCutOffText(*this, *static_cast<QHelpEvent*>(event));
        return true;
    }
    return QTreeView::viewportEvent(event);
}

void ListView::keyPressEvent(QKeyEvent* event) {
    if (ClicksItem(*event) && currentIndex().isValid()) {
        event->accept();
        RaiseItemClick(currentIndex());
        return;
    }
    QTreeView::keyPressEvent(event);
}

void ListView::RaiseItemClick(const QModelIndex& index) {
    ListItem* item = &model_->Item(index.row());
    Application::RunEvent([this, item] { Q_EMIT ItemClick(item); });
}

}  // namespace quarv::forms
