// LineScanner: what tells a box of many lines which parts of its text are of which kind, line by
// line. Whoever knows the language implements it; a TextBox shares it.
#pragma once

#include <QStringView>
#include <vector>

namespace quarv::forms {

enum class LineKind { Plain, Keyword, String, Comment, Number };

constexpr int LineKinds = 5;

// A part of one line.
struct LineSpan {
    int start = 0;   // UTF-16 units from the line's start
    int length = 0;  // UTF-16 units, at least 1
    LineKind kind = LineKind::Plain;

    bool operator==(const LineSpan&) const = default;
};

class LineScanner {
  public:
    // The state at the start of a text.
    static constexpr int FirstState = 0;

    virtual ~LineScanner() = default;

    // Adds the parts of `line` that are not plain to `spans`, in order and without overlap; null
    // where only the state is wanted. `state` is what the line before gave back. Gives the state at
    // the line's end, 0 or more; the same for the same line and state, always. Raises nothing.
    virtual int Scan(QStringView line, int state, std::vector<LineSpan>* spans) const = 0;
};

}  // namespace quarv::forms
