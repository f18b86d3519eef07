#include "platform/forms/NodeModel.h"

#include "base/RuntimeError.h"
#include "platform/forms/ItemText.h"

namespace quarv::forms {

void Node::SetText(const QString& text) {
    text_ = text;
    model_->TextChanged(*this);
}

std::vector<Node*> Node::Children() const {
    return model_->ChildrenOf(*this);
}

Node* Node::Parent() const {
    return model_->ParentOf(*this);
}

void Node::SetExpanded(bool expanded) {
    model_->SetExpanded(*this, expanded);
}

NodeModel::NodeModel(QObject* view)
    : QAbstractItemModel(view), store_(*this), keys_(store_), root_(new Node) {}

NodeModel::~NodeModel() = default;

Node& NodeModel::Add(const QString& relativeKey, const QString& key, const QString& text,
                     int image) {
    Node& parent = RequireParent(relativeKey);
    if (image < 0) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    if (!key.isEmpty() && !keys_.Add(Count(), key, {}))
        throw RuntimeError(RuntimeError::KeyNotUnique, key);
    Node& node = store_.Append();
    node.parent_ = &parent;
    node.key_ = key;
    node.text_ = text;
    node.image_ = image;
    node.row_ = static_cast<int>(parent.children_.size());
    AddChildren(parent, Count() - 1);
    return node;
}

void NodeModel::AddAll(const QString& relativeKey, const QString& keyPrefix,
                       std::vector<QString> texts, int image) {
    Node& parent = RequireParent(relativeKey);
    if (image < 0) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    const int first = Count();
    const auto firstRow = static_cast<int>(parent.children_.size());
    const NodeBatch& batch = store_.Append({&parent, keyPrefix, std::move(texts), image, firstRow});
    const QString refused = AddKeys(batch, first);
    AddChildren(parent, first);
    if (!refused.isNull()) throw RuntimeError(RuntimeError::KeyNotUnique, refused);
}

// The keys of the nodes from `first` on. Nodes from the first refused key on are taken away again;
// gives that key, else none.
QString NodeModel::AddKeys(const NodeBatch& batch, int first) {
    keys_.Reserve(batch.texts.size());
    int number = first;
    for (const QString& text : batch.texts) {
        const bool keyed = !batch.keyPrefix.isEmpty() || !text.isEmpty();
        if (keyed && !keys_.Add(number, batch.keyPrefix, text)) {
            const QString refused = batch.keyPrefix + text;
            store_.Truncate(number);
            return refused;
        }
        ++number;
    }
    return {};
}

Node& NodeModel::RequireParent(const QString& relativeKey) {
    Node* parent = relativeKey.isEmpty() ? root_.get() : Find(relativeKey);
    if (parent == nullptr) throw RuntimeError(RuntimeError::ElementNotFound, relativeKey);
    return *parent;
}

// The nodes from `first` on are the parent's new children.
void NodeModel::AddChildren(Node& parent, int first) {
    for (int number = first; number < Count(); ++number) parent.children_.push_back(number);
    if (parent.waiting_) return;
    // A parent starts to wait before any of its children does.
    parent.waiting_ = true;
    waiting_.push_back(&parent);
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
    parent.waiting_ = false;
    beginInsertRows(IndexOf(parent), parent.known_, count - 1);
    parent.known_ = count;
    endInsertRows();
}

Node* NodeModel::Find(const QString& key) {
    const int number = key.isEmpty() ? NodeKeys::NoNode : keys_.Find(key);
    return number == NodeKeys::NoNode ? nullptr : &At(number);
}

void NodeModel::Clear() {
    beginResetModel();
    root_->children_.clear();
    root_->known_ = 0;
    root_->waiting_ = false;
    store_.Clear();
    keys_.Clear();
    waiting_.clear();
    endResetModel();
}

Node* NodeModel::ParentOf(const Node& node) const {
    return node.parent_ == root_.get() ? nullptr : node.parent_;
}

std::vector<Node*> NodeModel::ChildrenOf(const Node& node) {
    std::vector<Node*> children;
    children.reserve(node.children_.size());
    for (const int number : node.children_) children.push_back(&At(number));
    return children;
}

int NodeModel::NumberOf(const QModelIndex& index) {
    return static_cast<int>(index.internalId());
}

Node* NodeModel::NodeAt(const QModelIndex& index) const {
    return index.isValid() ? &store_.At(NumberOf(index)) : nullptr;
}

QModelIndex NodeModel::IndexOf(const Node& node) const {
    if (&node == root_.get() || node.row_ >= node.parent_->known_) return {};
    return createIndex(node.row_, 0, static_cast<quintptr>(node.index_ - 1));
}

void NodeModel::TextChanged(const Node& node) {
    const QModelIndex changed = IndexOf(node);
    if (changed.isValid()) Q_EMIT dataChanged(changed, changed);
}

void NodeModel::SetExpanded(Node& node, bool expanded) {
    node.expanded_ = expanded;
    // A view does not expand what it sees no children of; Flush says so again with the first ones.
    const QModelIndex index = IndexOf(node);
    if (index.isValid()) Q_EMIT ExpansionChanged(index, expanded);
}

QModelIndex NodeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    const Node* above = parent.isValid() ? NodeAt(parent) : root_.get();
    return createIndex(row, column,
                       static_cast<quintptr>(above->children_[static_cast<size_t>(row)]));
}

QModelIndex NodeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? IndexOf(*store_.ParentAt(NumberOf(child))) : QModelIndex();
}

int NodeModel::rowCount(const QModelIndex& parent) const {
    if (parent.column() > 0) return 0;
    if (!parent.isValid()) return root_->known_;
    const Node* made = store_.MadeAt(NumberOf(parent));
    return made == nullptr ? 0 : made->known_;  // a node that was not made has no children
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
