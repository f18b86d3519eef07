// RObjectList: an ordered list of object references, compared by identity, with 1-based positions
// and a 16-bit count. It shares its objects with whoever else refers to them.
#pragma once

#include "base/Object.h"
#include "base/Slots.h"

namespace quarv {

class RObjectList : public Object {
  public:
    // Appends, "no object" like any other, and gives `o`. Raises Overflow for item 32758.
    ObjectRef Add(const ObjectRef& o);
    // As Add; for no object adds nothing and gives no object.
    ObjectRef AddIfAssigned(const ObjectRef& o);
    // Makes room for `n` items and ten more where there is none for `n`.
    void EnsureCanHold(qint16 n);
    qint16 Count() const { return count_; }
    // Every item becomes no object, which releases the references.
    void Clear();

    // A slot inside the storage (else SubscriptOutOfRange); it is not compared with the count.
    const ObjectRef& Items(qint16 index) const { return slots_[index]; }
    void SetItems(qint16 index, const ObjectRef& o) { slots_[index] = o; }

    bool IsPresent(const ObjectRef& o) const { return Find(o) != -1; }
    // The first position of the same object; -1 where there is none.
    qint16 Find(const ObjectRef& o) const;

    // Nothing happens above the count; otherwise the old last slot becomes no object.
    void Remove(qint16 index);
    // Appends the objects of `r`.
    void Copy(const RObjectList& r);
    // No object on an empty list.
    const ObjectRef& LastItem() const { return slots_[count_]; }

  private:
    Slots<ObjectRef> slots_;
    qint16 count_ = 0;
};

}  // namespace quarv
