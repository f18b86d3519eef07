// SqlLineScanner: finds keywords, texts, comments and numbers in lines of T-SQL, for the query box.
// It looks at no more than one line and what was open at its start, and checks no grammar.
#pragma once

#include "platform/forms/LineScanner.h"

namespace quarv {

class SqlLineScanner : public forms::LineScanner {
  public:
    // What is open at a line's end. InComment + n: n + 1 comments, one in the other.
    enum State : int { InNothing = FirstState, InText, InQuotes, InBrackets, InComment };
    // More are taken for as many.
    static constexpr int DeepestComment = 1'000'000;

    // A state that no line ends in counts as InNothing, or as the deepest comment.
    int Scan(QStringView line, int state, std::vector<forms::LineSpan>* spans) const override;
};

}  // namespace quarv
