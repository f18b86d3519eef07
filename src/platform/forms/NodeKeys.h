// NodeKeys: which node of a tree has a key, in any letter case. It keeps no key of its own but
// looks at the nodes', so that ten thousand keys cost little more than their nodes. The model owns
// both.
#pragma once

#include <QString>
#include <vector>

namespace quarv::forms {

class Node;

class NodeKeys {
  public:
    // Null where no node has the key.
    Node* Find(const QString& key) const;
    // False, and nothing is added, where the key is taken: `prefix` and `rest` joined. It must be
    // the node's, and stay so.
    bool Add(Node& node, QStringView prefix, QStringView rest);
    // Makes room for so many keys more.
    void Reserve(std::size_t more);
    void Clear();

  private:
    struct Slot {
        quint32 hash = 0;
        Node* node = nullptr;
    };

    // The slot of the key, or the empty one where it belongs; the table is never full.
    std::size_t Place(QStringView prefix, QStringView rest, quint32 hash) const;
    // `size` is a power of two.
    void Resize(std::size_t size);

    std::vector<Slot> slots_;  // as many as a power of two, or none
    std::size_t used_ = 0;
};

}  // namespace quarv::forms
