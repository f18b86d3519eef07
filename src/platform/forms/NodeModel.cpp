#include "platform/forms/NodeModel.h"

#include "base/RuntimeError.h"
#include "platform/forms/ItemText.h"

namespace quarv::forms {

namespace {

// Nodes are made in blocks: fewer trips to the heap, and neighbours in the tree lie side by side.
constexpr int BlockSize = 128;

}  // namespace

void Node::SetText(const QString& text) {
    text_ = text;
    model_->TextChanged(*this);
}

Node* Node::Parent() const {
    return model_->ParentOf(*this);
}

void Node::SetExpanded(bool expanded) {
    model_->SetExpanded(*this, expanded);
}

NodeModel::NodeModel(QObject* view) : QAbstractItemModel(view), root_(new Node) {
    root_->shown_ = true;
}

NodeModel::~NodeModel() = default;

Node& NodeModel::Add(const QString& relativeKey, const QString& key, const QString& text,
                     int image) {
    Node* parent = ParentFor(relativeKey);
    if (parent == nullptr) throw RuntimeError(RuntimeError::ElementNotFound, relativeKey);
    if (image < 0) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    Node& node = NextNode();
    node.model_ = this;
    node.parent_ = parent;
    node.text_ = text;
    SetKey(node, key, text);
    node.image_ = image;
    node.index_ = count_ + 1;
    node.row_ = static_cast<int>(parent->children_.size());
    if (!key.isEmpty() && !keys_.Add(node, key))
        throw RuntimeError(RuntimeError::KeyNotUnique, key);
    ++count_;
    parent->children_.push_back(&node);
    ScheduleFlush(*parent);
    return node;
}

Node& NodeModel::NextNode() {
    if (count_ == static_cast<int>(blocks_.size()) * BlockSize)
        blocks_.emplace_back(new Node[BlockSize]);
    return At(count_);
}

Node& NodeModel::At(int index) const {
    return blocks_[static_cast<size_t>(index / BlockSize)][static_cast<size_t>(index % BlockSize)];
}

void NodeModel::SetKey(Node& node, const QString& key, const QString& text) {
    const qsizetype before = key.endsWith(text) ? key.size() - text.size() : 0;
    if (QStringView(key).first(before) != lastPrefix_) lastPrefix_ = key.first(before);
    node.prefix_ = lastPrefix_;
    node.rest_ = before > 0 ? text : key;
}

Node* NodeModel::ParentFor(const QString& relativeKey) {
    if (relativeKey.isEmpty()) return root_.get();
    // Children mostly come one after another under the same parent.
    if (lastParent_ == nullptr || lastParentKey_ != relativeKey) {
        lastParent_ = Find(relativeKey);
        lastParentKey_ = relativeKey;
    }
    return lastParent_;
}

void NodeModel::ScheduleFlush(Node& parent) {
    // The first child that the view does not know makes its parent wait; further ones find it
    // waiting. A parent starts to wait before any of its children does.
    if (static_cast<int>(parent.children_.size()) == parent.known_ + 1) waiting_.push_back(&parent);
    if (flushPending_) return;
    flushPending_ = true;
    QMetaObject::invokeMethod(
        this, [this] { Flush(); }, Qt::QueuedConnection);
}

void NodeModel::Flush() {
    flushPending_ = false;
    const std::vector<Node*> parents = std::move(waiting_);
    waiting_.clear();
    for (Node* parent : parents) Show(*parent);
    for (Node* parent : parents)
        if (parent->expanded_) Q_EMIT ExpansionChanged(IndexOf(*parent), true);
}

void NodeModel::Show(Node& parent) {
    const auto count = static_cast<int>(parent.children_.size());
    const int first = parent.known_;
    beginInsertRows(IndexOf(parent), first, count - 1);
    parent.known_ = count;
    for (int row = first; row < count; ++row)
        parent.children_[static_cast<size_t>(row)]->shown_ = true;
    endInsertRows();
}

Node* NodeModel::Find(const QString& key) const {
    return key.isEmpty() ? nullptr : keys_.Find(key);
}

void NodeModel::Clear() {
    beginResetModel();
    root_->children_.clear();
    root_->known_ = 0;
    blocks_.clear();
    count_ = 0;
    keys_.Clear();
    waiting_.clear();
    lastParent_ = nullptr;
    endResetModel();
}

Node* NodeModel::ParentOf(const Node& node) const {
    return node.parent_ == root_.get() ? nullptr : node.parent_;
}

Node* NodeModel::NodeAt(const QModelIndex& index) const {
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : nullptr;
}

QModelIndex NodeModel::IndexOf(const Node& node) const {
    if (&node == root_.get() || !node.shown_) return {};
    return createIndex(node.row_, 0, &node);
}

void NodeModel::TextChanged(const Node& node) {
    if (!node.shown_) return;
    const QModelIndex changed = IndexOf(node);
    Q_EMIT dataChanged(changed, changed);
}

void NodeModel::SetExpanded(Node& node, bool expanded) {
    node.expanded_ = expanded;
    // A view does not expand what it sees no children of; Flush says so again with the first ones.
    if (node.shown_) Q_EMIT ExpansionChanged(IndexOf(node), expanded);
}

QModelIndex NodeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    const Node* above = parent.isValid() ? NodeAt(parent) : root_.get();
    return createIndex(row, column, above->children_[static_cast<size_t>(row)]);
}

QModelIndex NodeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? IndexOf(*NodeAt(child)->parent_) : QModelIndex();
}

int NodeModel::rowCount(const QModelIndex& parent) const {
    if (parent.column() > 0) return 0;
    return parent.isValid() ? NodeAt(parent)->known_ : root_->known_;
}

int NodeModel::columnCount(const QModelIndex&) const {
    return 1;
}

bool NodeModel::hasChildren(const QModelIndex& parent) const {
    return rowCount(parent) > 0;
}

QVariant NodeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const Node& node = *NodeAt(index);
    if (role == Qt::DisplayRole) return ShownText(node.text_);
    if (role == WholeTextRole) return node.text_;
    if (role == Qt::DecorationRole && node.image_ > 0 &&
        static_cast<size_t>(node.image_) <= images_.size())
        return images_[static_cast<size_t>(node.image_ - 1)];
    return {};
}

}  // namespace quarv::forms
