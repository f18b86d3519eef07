#include "base/rList.h"

#include "base/LateBinding.h"

namespace quarv {

void rList::Add(const Value& v) {
    const Value held = v;  // `v` may live in the storage that is about to move
    EnsureCanHold(Add16(count_, 1));
    slots_[++count_] = held;
}

void rList::AddReference(const Value& v) {
    Add(v.ToObject());
}

void rList::EnsureCanHold(qint16 n) {
    slots_.EnsureCanHold(n);
}

void rList::Clear() {
    for (int i = 1; i <= count_; ++i) slots_[i] = 0;
    count_ = 0;
}

void rList::AddToListControl(QObject& c) const {
    for (int i = 1; i <= count_; ++i) CallByName(&c, QStringLiteral("AddItem"), {slots_[i]});
}

qint16 rList::Find(const Value& v) const {
    for (int i = 1; i <= count_; ++i) {
        if (Value::Equal(slots_[i], v)) return static_cast<qint16>(i);
    }
    return -1;
}

void rList::Remove(qint16 index) {
    slots_.MoveDown(index, count_);
    count_ = Add16(count_, -1);
}

void rList::RemoveReference(qint16 index) {
    for (int i = index + 1; i <= count_; ++i) slots_[i].ToObject();
    slots_.MoveDown(index, count_);
    slots_[count_] = ObjectRef();
    count_ = Add16(count_, -1);
}

void rList::Copy(const rList& r) {
    const qint16 last = r.count_;  // taken once: `r` may be this list
    for (int i = 1; i <= last; ++i) Add(r.slots_[i]);
}

}  // namespace quarv
