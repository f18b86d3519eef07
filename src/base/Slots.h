// Slots: the storage that the 1-based lists share. It is indexed from 0 and is created with upper
// bound 10; slot 0 belongs to nobody. It knows no count: slots above a list's count keep stale
// contents. Owned by its list.
#pragma once

#include <vector>

#include "base/Checked16.h"
#include "base/RuntimeError.h"

namespace quarv {

template <typename T>
class Slots {
  public:
    static constexpr qint16 Step = 10;

    // Where the upper bound is below `n`, re-sizes to upper bound n + 10, keeping the contents.
    // Raises Overflow where that sum does not fit 16 bits.
    void EnsureCanHold(qint16 n) {
        if (n < static_cast<qint64>(slots_.size())) return;
        slots_.resize(static_cast<size_t>(Add16(n, Step)) + 1);
    }

    // Raise SubscriptOutOfRange where `index` lies outside the storage.
    const T& operator[](int index) const { return slots_[Check(index)]; }
    T& operator[](int index) { return slots_[Check(index)]; }

    // Moves the contents of first + 1 .. last one place down, by copy; slot `last` keeps its own.
    void MoveDown(qint16 first, qint16 last) {
        for (int i = first; i < last; ++i) {
            (*this)[i] = (*this)[i + 1];
        }
    }

    // Moves the contents of first .. last one place up, by copy; slot `first` keeps its own.
    void MoveUp(qint16 first, qint16 last) {
        for (int i = last; i >= first; --i) {
            (*this)[i + 1] = (*this)[i];
        }
    }

  private:
    size_t Check(int index) const {
        if (index < 0 || static_cast<size_t>(index) >= slots_.size()) {
            throw RuntimeError(RuntimeError::SubscriptOutOfRange);
        }
        return static_cast<size_t>(index);
    }

    std::vector<T> slots_ = std::vector<T>(Step + 1);
};

}  // namespace quarv
