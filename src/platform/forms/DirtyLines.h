// DirtyLines: which lines of a text have to be scanned: those of a run that was edited, and those
// that never were scanned, down to the text's end. Of every other line the state at its start is
// kept elsewhere; behind the run a scan may stop where that state is what it was. LineColouring
// owns one. Lines count from 0.
#pragma once

#include <limits>

namespace quarv::forms {

class DirtyLines {
  public:
    static constexpr int NoLine = std::numeric_limits<int>::max();

    // No line of a text of `count` lines was scanned.
    void SetAll(int count);

    // The lines from `first` to `last` stand where others stood; the text has `count` lines now.
    // Before First() may be `first`, its state has to be what the line before leaves.
    void Replace(int first, int last, int count);

    // The line to scan next, whose state at the start is right; NoLine where none is left.
    int First() const;
    // First() was scanned. `asBefore`: the next line's state is what it was at its last scan.
    void Scanned(bool asBefore);

  private:
    void EndRun() { first_ = end_ = NoLine; }

    // The run; both NoLine without one.
    int first_ = NoLine;
    int end_ = NoLine;
    // From here on no line was scanned.
    int known_ = 0;
    int count_ = 0;
};

}  // namespace quarv::forms
