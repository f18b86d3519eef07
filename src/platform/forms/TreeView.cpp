#include "platform/forms/TreeView.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>

#include "base/RuntimeError.h"
#include "platform/forms/Application.h"
#include "platform/forms/ImageList.h"
#include "platform/forms/ItemText.h"
#include "platform/forms/KeyPress.h"
#include "platform/forms/NodeModel.h"
#include "platform/forms/RowDelegate.h"

namespace quarv::forms {

namespace {

constexpr int RowAir = 2;

}  // namespace

Node& Nodes::Add(const QString& relativeKey, const QString& key, const QString& text, int image) {
    return model_.Add(relativeKey, key, text, image);
}

void Nodes::AddAll(const QString& relativeKey, const QString& keyPrefix, std::vector<QString> texts,
                   int image) {
    model_.AddAll(relativeKey, keyPrefix, std::move(texts), image);
}

int Nodes::Count() const {
    return model_.Count();
}

Node& Nodes::Item(int index) const {
    if (index < 1 || index > Count()) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return model_.At(index - 1);
}

Node& Nodes::Item(const QString& key) const {
    Node* node = model_.Find(key);
    if (node == nullptr) throw RuntimeError(RuntimeError::ElementNotFound, key);
    return *node;
}

void Nodes::Clear() {
    model_.Clear();
}

TreeView::TreeView(QWidget* container, const QString& name)
    : QTreeView(container),
      Control(this, container, name),
      model_(new NodeModel(this)),
      nodes_(*model_) {
    setModel(model_);
    setItemDelegate(new RowDelegate(this, RowAir));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    RefreshSpokenName();
    connect(this, &QTreeView::clicked, this, &TreeView::RaiseNodeClick);
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) {
        model_->NoteExpanded(*model_->NodeAt(index), true);
    });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex& index) {
        model_->NoteExpanded(*model_->NodeAt(index), false);
    });
    connect(model_, &NodeModel::ExpansionChanged, this, &TreeView::Expand);
}

void TreeView::SetImageList(const ImageList& list) {
    std::vector<QIcon> images;
    images.reserve(static_cast<size_t>(list.Count()));
    for (int number = 1; number <= list.Count(); ++number) images.push_back(list.Picture(number));
    model_->SetImages(std::move(images));
    viewport()->update();
}

Node* TreeView::SelectedItem() const {
    return model_->NodeAt(currentIndex());
}

void TreeView::SetSelectedItem(const Node& node) {
    model_->Flush();
    setCurrentIndex(model_->IndexOf(node));
}

bool TreeView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        ShowCutOffText(*this, *static_cast<QHelpEvent*>(event));
        return true;
    }
    return QTreeView::viewportEvent(event);
}

void TreeView::keyPressEvent(QKeyEvent* event) {
    if (ClicksItem(*event) && currentIndex().isValid()) {
        event->accept();
        RaiseNodeClick(currentIndex());
        return;
    }
    QTreeView::keyPressEvent(event);
}

void TreeView::Expand(const QModelIndex& index, bool expanded) {
    setExpanded(index, expanded);
}

void TreeView::RaiseNodeClick(const QModelIndex& index) {
    Node* node = model_->NodeAt(index);
    Application::RunEvent([this, node] { Q_EMIT NodeClick(node); });
}

}  // namespace quarv::forms
