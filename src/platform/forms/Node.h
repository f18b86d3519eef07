// Node: one node of a TreeView: key, text, picture number, place. The tree's model owns it; it
// lives until the tree is cleared.
#pragma once

#include <QString>
#include <vector>

namespace quarv::forms {

class NodeModel;

class Node {
  public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    QString Key() const { return prefix_ + rest_; }
    const QString& Text() const { return text_; }
    void SetText(const QString& text);
    // The 1-based number in the tree's image list; 0 for no picture.
    int Image() const { return image_; }
    // 1-based position in the order of creation.
    int Index() const { return index_; }
    // Null for a node at the top.
    Node* Parent() const;
    const std::vector<Node*>& Children() const { return children_; }

    // Whether the children are shown. A node may be expanded before it has any.
    bool Expanded() const { return expanded_; }
    void SetExpanded(bool expanded);

  private:
    friend class NodeModel;
    Node() = default;

    NodeModel* model_ = nullptr;
    Node* parent_ = nullptr;
    // The key in two parts: of nodes that were added together, `prefix_` is one text for all and
    // `rest_` is the node's text, so that thousands of keys need no memory.
    QString prefix_;
    QString rest_;
    QString text_;
    std::vector<Node*> children_;
    int image_ = 0;
    int index_ = 0;
    int row_ = 0;    // among its parent's children
    int known_ = 0;  // children that the view was told of
    bool shown_ = false;
    bool expanded_ = false;
};

}  // namespace quarv::forms
