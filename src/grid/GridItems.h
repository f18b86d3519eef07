// GridItems: the ordered storage that the grid's two lists share: counted references at 1-based
// positions with a 16-bit count. Its owner is the list; it knows neither columns nor rows.
#pragma once

#include <memory>

#include "base/Slots.h"

namespace quarv {

template <typename Item>
class GridItems {
  public:
    using Reference = std::shared_ptr<Item>;

    // Where the upper bound is below `n`, the storage grows to upper bound n + 10 and keeps its
    // contents; it never shrinks. Raises Overflow where that sum does not fit 16 bits.
    void EnsureCanHold(qint16 n) { slots_.EnsureCanHold(n); }

    qint16 Count() const { return count_; }

    // Raises Overflow for item 32758, whose room no longer fits 16 bits, and ObjectNotSet for none.
    void Add(Reference item) {
        if (!item) throw RuntimeError(RuntimeError::ObjectNotSet);
        const qint16 count = Add16(count_, 1);
        EnsureCanHold(count);
        count_ = count;
        slots_[count] = std::move(item);
    }

    // Nothing above the count; raises SubscriptOutOfRange outside the storage.
    const Reference& At(qint16 index) const {
        CheckLowerBound(index);
        return slots_[index];
    }

    void Clear() {
        for (qint16 i = 1; i <= count_; ++i) slots_[i].reset();
        count_ = 0;
    }

    // Closes the gap. A position beyond the count deliberately takes the last item. Raises
    // SubscriptOutOfRange below 1 and on an empty list; then nothing is removed.
    void Remove(qint16 index) {
        CheckLowerBound(index);
        CheckLowerBound(count_);
        slots_.MoveDown(index, count_);
        slots_[count_].reset();
        --count_;
    }

    // The position of this very object; -1 where it is not in the list.
    qint16 IndexOf(const Item* item) const {
        for (qint16 i = 1; i <= count_; ++i)
            if (slots_[i].get() == item) return i;
        return -1;
    }

  private:
    static void CheckLowerBound(qint16 index) {
        if (index < 1) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    }

    Slots<Reference> slots_;
    qint16 count_ = 0;
};

}  // namespace quarv
