#include "platform/forms/DirtyLines.h"

#include <algorithm>

namespace quarv::forms {

void DirtyLines::SetAll(int count) {
    EndRun();
    known_ = 0;
    count_ = count;
}

void DirtyLines::Replace(int first, int last, int count) {
    if (first == 0 && last == count - 1) {
        SetAll(count);
        return;
    }
    const int more = count - count_;
    count_ = count;
    if (first >= known_) return;
    if (last - more >= known_) {
        known_ = first;
        if (first_ >= first)
            EndRun();
        else
            end_ = std::min(end_, first);
        return;
    }
    known_ += more;
    end_ = first_ == NoLine ? last + 1 : std::max(end_ + more, last + 1);
    first_ = std::min(first_, first);
}

int DirtyLines::First() const {
    if (first_ != NoLine) return first_;
    return known_ < count_ ? known_ : NoLine;
}

void DirtyLines::Scanned(bool asBefore) {
    if (first_ == NoLine) {
        ++known_;
        return;
    }
    ++first_;
    if (first_ >= known_ || (first_ >= end_ && asBefore))
        EndRun();
    else
        end_ = std::max(end_, first_ + 1);
}

}  // namespace quarv::forms
