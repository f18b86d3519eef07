#include "base/RObjectList.h"

namespace quarv {

ObjectRef RObjectList::Add(const ObjectRef& o) {
    const ObjectRef held = o;  // `o` may live in the storage that is about to move
    EnsureCanHold(Add16(count_, 1));
    slots_[++count_] = held;
    return held;
}

ObjectRef RObjectList::AddIfAssigned(const ObjectRef& o) {
    if (o == nullptr) return {};
    return Add(o);
}

void RObjectList::EnsureCanHold(qint16 n) {
    slots_.EnsureCanHold(n);
}

void RObjectList::Clear() {
    for (int i = 1; i <= count_; ++i) slots_[i].reset();
    count_ = 0;
}

qint16 RObjectList::Find(const ObjectRef& o) const {
    for (int i = 1; i <= count_; ++i) {
        if (slots_[i] == o) return static_cast<qint16>(i);
    }
    return -1;
}

void RObjectList::Remove(qint16 index) {
    if (index > count_) return;
    slots_.MoveDown(index, count_);
    slots_[count_].reset();
    count_ = Add16(count_, -1);
}

void RObjectList::Copy(const RObjectList& r) {
    const qint16 last = r.count_;  // taken once: `r` may be this list
    for (int i = 1; i <= last; ++i) Add(r.slots_[i]);
}

}  // namespace quarv
