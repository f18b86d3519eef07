// NodeModel: the nodes of a TreeView, which owns it. New nodes are told to the view in one go per
// parent, once events are handled again, so that filling a tree lays nothing out node by node. It
// knows no widget.
#pragma once

#include <QAbstractItemModel>
#include <QIcon>
#include <memory>
#include <vector>

#include "platform/forms/Node.h"
#include "platform/forms/NodeKeys.h"
#include "platform/forms/NodeStore.h"

namespace quarv::forms {

class NodeModel : public QAbstractItemModel {
    Q_OBJECT

  public:
    explicit NodeModel(QObject* view);
    ~NodeModel() override;

    void SetImages(std::vector<QIcon> images) { images_ = std::move(images); }

    // See Nodes.
    Node& Add(const QString& relativeKey, const QString& key, const QString& text, int image);
    void AddAll(const QString& relativeKey, const QString& keyPrefix, std::vector<QString> texts,
                int image);
    int Count() const { return store_.Count(); }
    // 0-based, in the order of creation.
    Node& At(int number) { return store_.At(number); }
    // Null where no node has this key.
    Node* Find(const QString& key);
    void Clear();

    // Tells the view of the nodes that it does not know yet.
    void Flush();
    // Null for no index.
    Node* NodeAt(const QModelIndex& index) const;
    QModelIndex IndexOf(const Node& node) const;

    std::vector<Node*> ChildrenOf(const Node& node);
    void TextChanged(const Node& node);
    void SetExpanded(Node& node, bool expanded);
    // What the user did in the view.
    void NoteExpanded(Node& node, bool expanded) { node.expanded_ = expanded; }
    Node* ParentOf(const Node& node) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  Q_SIGNALS:
    // A node that the view knows is to be shown with or without its children.
    void ExpansionChanged(const QModelIndex& index, bool expanded);

  private:
    Node& RequireParent(const QString& relativeKey);
    QString AddKeys(const NodeBatch& batch, int first);
    void AddChildren(Node& parent, int first);
    void Show(Node& parent);
    // The number of the node that an index stands for.
    static int NumberOf(const QModelIndex& index);

    mutable NodeStore store_;  // makes nodes as the view asks for them
    NodeKeys keys_;
    std::unique_ptr<Node> root_;
    std::vector<Node*> waiting_;  // parents with children that the view does not know
    std::vector<QIcon> images_;
    bool flushPending_ = false;
};

}  // namespace quarv::forms
