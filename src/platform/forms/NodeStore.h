// NodeStore: the nodes of a tree by number. Nodes that were added together are kept as their texts
// until one is asked for, so that a group that nobody opens costs little more than its names. The
// model owns it; it knows nothing of views.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "platform/forms/Node.h"

namespace quarv::forms {

// Children added together: neighbours under one parent, alike but for their texts.
struct NodeBatch {
    Node* parent = nullptr;
    QString keyPrefix;  // each key is this and the text
    std::vector<QString> texts;
    int image = 0;
    int firstRow = 0;  // of the first among the parent's children
};

class NodeStore {
  public:
    explicit NodeStore(NodeModel& model);
    ~NodeStore();

    int Count() const { return count_; }
    // Numbers are 0-based and within Count.
    Node& At(int number);
    // As At(number)'s, without making the node.
    Node* ParentAt(int number) const;
    QString KeyAt(int number) const;
    // The node if it was made, else null.
    Node* MadeAt(int number) const;

    // One node more, whose parent, key and row the caller sets.
    Node& Append();
    // The batch is valid until the next one is added.
    const NodeBatch& Append(NodeBatch batch);
    // Takes the last nodes away, none of which may have been made, so that `count` are left.
    void Truncate(int count);
    void Clear();

  private:
    struct Recipe {
        int first;  // the number of the first node
        NodeBatch batch;
    };

    Node& Place(int number);
    const Recipe& RecipeOf(int number) const;
    void Make(Node& node, int number);

    NodeModel& model_;
    std::vector<std::unique_ptr<Node[]>> pieces_;  // so many nodes to each; null until one is made
    std::vector<Recipe> recipes_;                  // by their first numbers
    int count_ = 0;
};

}  // namespace quarv::forms
