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
    if (image < 0) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    return Append(RequireParent(relativeKey), {}, key, text, image);
}

void NodeModel::AddAll(const QString& relativeKey, const QString& keyPrefix,
                       const std::vector<QString>& texts, int image) {
    if (image < 0) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    Node& parent = RequireParent(relativeKey);
    keys_.Reserve(texts.size());
    parent.children_.reserve(parent.children_.size() + texts.size());
    for (const QString& text : texts) Append(parent, keyPrefix, text, text, image);
}

Node& NodeModel::Append(Node& parent, const QString& prefix, const QString& rest,
                        const QString& text, int image) {
    Node& node = NextNode();
    node.model_ = this;
    node.parent_ = &parent;
    node.prefix_ = prefix;
    node.rest_ = rest;
    node.text_ = text;
    node.image_ = image;
    node.index_ = count_ + 1;
    node.row_ = static_cast<int>(parent.children_.size());
    const bool keyed = !prefix.isEmpty() || !rest.isEmpty();
    if (keyed && !keys_.Add(node, prefix, rest))
        throw RuntimeError(RuntimeError::KeyNotUnique, prefix + rest);
    ++count_;
    parent.children_.push_back(&node);
    ScheduleFlush(parent);
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

Node& NodeModel::RequireParent(const QString& relativeKey) {
    Node* parent = relativeKey.isEmpty() ? root_.get() : Find(relativeKey);
    if (parent == nullptr) throw RuntimeError(RuntimeError::ElementNotFound, relativeKey);
    return *parent;
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
