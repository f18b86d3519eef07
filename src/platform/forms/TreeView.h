// TreeView: a tree of keyed nodes with pictures. It paints what is visible from its model; there is
// no widget per node, and ten thousand nodes fill it without a pause.
#pragma once

#include <QTreeView>

#include "platform/forms/Control.h"
#include "platform/forms/Node.h"

namespace quarv::forms {

class ImageList;
class NodeModel;

// All nodes of a tree in the order of creation, 1-based.
class Nodes {
  public:
    // Appends a child of the node with `relativeKey`, a node at the top where that is "". `image`
    // is a number of the tree's image list or 0; without such a picture none is shown. The
    // reference holds until Clear. Keys ignore letter case; nodes without one have the key "".
    // Raises ElementNotFound for an unknown `relativeKey`, KeyNotUnique for a key that is taken;
    // nothing is added then.
    Node& Add(const QString& relativeKey, const QString& key, const QString& text, int image = 0);
    // Appends a child for each text, as Add does, its key made of `keyPrefix` and the text. Where
    // one is refused, those before it stay.
    void AddAll(const QString& relativeKey, const QString& keyPrefix, std::vector<QString> texts,
                int image = 0);
    int Count() const;
    // Raise SubscriptOutOfRange outside the tree, ElementNotFound for an unknown key.
    Node& Item(int index) const;
    Node& Item(const QString& key) const;
    void Clear();

  private:
    friend class TreeView;
    explicit Nodes(NodeModel& model) : model_(model) {}
    NodeModel& model_;
};

class TreeView : public QTreeView, public Control {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES

  public:
    TreeView(QWidget* container, const QString& name);

    // Takes the pictures that the list has now.
    void SetImageList(const ImageList& list);
    forms::Nodes& Nodes() { return nodes_; }
    // Null where no node is selected. Selecting from code raises no NodeClick.
    Node* SelectedItem() const;
    void SetSelectedItem(const Node& node);

  Q_SIGNALS:
    // A node was clicked with the left button, or Enter or Space pressed on it. Moving among the
    // nodes by keys selects only.
    void NodeClick(quarv::forms::Node* node);

  protected:
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Expand(const QModelIndex& index, bool expanded);
    void RaiseNodeClick(const QModelIndex& index);

    NodeModel* model_;
    forms::Nodes nodes_;
};

}  // namespace quarv::forms
