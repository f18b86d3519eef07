// NodeKeys: which node of a tree has a key, in any letter case. It keeps no key of its own but
// looks at the store's, so that ten thousand keys cost little more than their nodes. The model owns
// both.
#pragma once

#include <QString>
#include <vector>

namespace quarv::forms {

class NodeStore;

class NodeKeys {
  public:
    // What Find gives where no node has the key.
    static constexpr int NoNode = -1;

    explicit NodeKeys(const NodeStore& store) : store_(store) {}

    // The node's number.
    int Find(const QString& key) const;
    // The key is `prefix` and `rest` joined; from now on it is the node's in the store. False, and
    // nothing is added, where another has it.
    bool Add(int number, QStringView prefix, QStringView rest);
    // Makes room for so many keys more.
    void Reserve(std::size_t more);
    void Clear();

  private:
    struct Slot {
        quint32 hash = 0;
        int number = NoNode;
    };

    bool HasKey(int number, QStringView prefix, QStringView rest) const;
    // The slot of the key, or the empty one where it belongs; the table is never full.
    std::size_t Place(QStringView prefix, QStringView rest, quint32 hash) const;
    // `size` is a power of two.
    void Resize(std::size_t size);

    const NodeStore& store_;
    std::vector<Slot> slots_;  // as many as a power of two, or none
    std::size_t used_ = 0;
};

}  // namespace quarv::forms
