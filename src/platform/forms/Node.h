// Node: one node of a TreeView: key, text, picture number, place. The tree's model owns it, makes
// it when it is first asked for, and keeps it until the tree is cleared.
#pragma once

#include <QString>
#include <vector>

namespace quarv::forms {

class NodeModel;

class Node {
  public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    const QString& Key() const { return key_; }
    const QString& Text() const { return text_; }
    void SetText(const QString& text);
    // The 1-based number in the tree's image list; 0 for no picture.
    int Image() const { return image_; }
    // 1-based position in the order of creation.
    int Index() const { return index_; }
    // Null for a node at the top.
    Node* Parent() const;
    // In their order.
    std::vector<Node*> Children() const;

    // Whether the children are shown. A node may be expanded before it has any.
    bool Expanded() const { return expanded_; }
    void SetExpanded(bool expanded);

  private:
    friend class NodeModel;
    friend class NodeStore;
    Node() = default;

    NodeModel* model_ = nullptr;  // null until the node is made
    Node* parent_ = nullptr;
    QString key_;
    QString text_;
    std::vector<int> children_;  // their numbers
    int image_ = 0;
    int index_ = 0;
    int row_ = 0;           // among its parent's children
    int known_ = 0;         // children that the view was told of
    bool waiting_ = false;  // until the view is told of the others
    bool expanded_ = false;
};

}  // namespace quarv::forms
