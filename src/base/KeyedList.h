// KeyedList: what RNamedList and RPairList share, an ordered list of keys with a value each. Keys
// match through the static member `Match` of `Matcher`. Positions are 1-based; duplicates are kept.
// Every position outside the storage raises SubscriptOutOfRange; one inside the storage but above
// the count is not refused.
#pragma once

#include "base/Object.h"
#include "base/Slots.h"
#include "base/Value.h"

namespace quarv {

template <typename Key, typename Matcher>
class KeyedList : public Object {
  public:
    // Appends. Raises Overflow for item 32758.
    void Add(const Key& key, const Value& value) {
        const Key heldKey = key;  // either may live in the storage that is about to move
        const Value heldValue = value;
        EnsureCanHold(Add16(count_, 1));
        ++count_;
        keys_[count_] = heldKey;
        values_[count_] = heldValue;
    }

    // Makes room for `n` items and ten more where there is none for `n`.
    void EnsureCanHold(qint16 n) {
        keys_.EnsureCanHold(n);
        values_.EnsureCanHold(n);
    }

    qint16 Count() const { return count_; }

    // Keys and values stay in their slots.
    void Clear() { count_ = 0; }

    Value Keys(qint16 index) const { return keys_[index]; }
    const Value& Values(qint16 index) const { return values_[index]; }
    void SetValues(qint16 index, const Value& value) { values_[index] = value; }

    Value ValueByKey(const Key& key) const { return FindKey(key); }

    // Every position whose key matches receives the value; without a match nothing happens.
    void SetValueByKey(const Key& key, const Value& value) {
        const Value held = value;
        for (int i = 1; i <= count_; ++i) {
            if (Matcher::Match(keys_[i], key)) values_[i] = held;
        }
    }

    bool IsPresent(const Key& key) const { return Position(key) > 0; }

    // The value of the first key that matches; no object (not empty) where none does.
    Value FindKey(const Key& key) const {
        const int position = Position(key);
        return position > 0 ? values_[position] : Value(ObjectRef());
    }

    // The position is not validated, nor is an empty list refused; the old last slots keep theirs.
    void Remove(qint16 index) {
        keys_.MoveDown(index, count_);
        values_.MoveDown(index, count_);
        count_ = Add16(count_, -1);
    }

  private:
    // 0 where no key matches.
    int Position(const Key& key) const {
        for (int i = 1; i <= count_; ++i) {
            if (Matcher::Match(keys_[i], key)) return i;
        }
        return 0;
    }

    Slots<Key> keys_;
    Slots<Value> values_;
    qint16 count_ = 0;
};

}  // namespace quarv
