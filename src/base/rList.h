// rList: an ordered list of values of any type with 1-based positions and a 16-bit count. A value
// that holds an object is kept as the reference. Its owner is whoever made it.
#pragma once

#include <QObject>

#include "base/Object.h"
#include "base/Slots.h"
#include "base/Value.h"

namespace quarv {

class rList : public Object {
  public:
    // Appends. Raises Overflow for item 32758.
    void Add(const Value& v);
    // As Add; raises TypeMismatch, and adds nothing, where `v` holds no object reference.
    void AddReference(const Value& v);
    // Makes room for `n` items and ten more where there is none for `n`.
    void EnsureCanHold(qint16 n);
    qint16 Count() const { return count_; }
    // Every item becomes the number 0, which releases the objects.
    void Clear();

    // A slot inside the storage (else SubscriptOutOfRange); it is not compared with the count.
    const Value& Items(qint16 index) const { return slots_[index]; }
    void SetItems(qint16 index, const Value& v) { slots_[index] = v; }
    // The slot as an object reference; both raise TypeMismatch where there is none.
    const ObjectRef& ItemsReference(qint16 index) const { return slots_[index].ToObject(); }
    void SetItemsReference(qint16 index, const Value& v) { slots_[index] = v.ToObject(); }

    // Calls the method AddItem of `c`, by name, with each item. Does not clear `c` first.
    void AddToListControl(QObject& c) const;

    bool IsPresent(const Value& v) const { return Find(v) != -1; }
    // The first item equal to `v`, an object only to itself; -1 where there is none.
    qint16 Find(const Value& v) const;

    // The old last slot keeps its content.
    void Remove(qint16 index);
    // As Remove where all later items are object references (else TypeMismatch, and nothing moves);
    // the old last slot becomes no object.
    void RemoveReference(qint16 index);
    // Appends the items of `r`.
    void Copy(const rList& r);

  private:
    Slots<Value> slots_;
    qint16 count_ = 0;
};

}  // namespace quarv
