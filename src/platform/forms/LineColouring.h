// LineColouring: knows what a LineScanner finds in the lines of a document, and scans no more of
// them than somebody looks at. A MemoEditor owns it, tells it of edits and asks for the lines on
// the screen. The state at a line's start is kept as the block's user state.
#pragma once

#include <QTextBlock>
#include <memory>
#include <vector>

#include "platform/forms/DirtyLines.h"
#include "platform/forms/LineScanner.h"

namespace quarv::forms {

class LineColouring {
  public:
    // Keeps the reference. Null scans nothing: every line is plain.
    explicit LineColouring(QTextDocument& document) : document_(document) {}
    void SetScanner(std::shared_ptr<const LineScanner> scanner);

    // As QTextDocument::contentsChange has it.
    void Edited(int position, int added);

    // Scans what has to be for Spans of this line, lines before it included. True where the line
    // may have other spans than before.
    bool Reach(const QTextBlock& line);

    // What is in a line that was reached; valid until the next call. `text` is the line's.
    const std::vector<LineSpan>& Spans(const QTextBlock& line, QStringView text);

  private:
    // Of the first of lines that are scanned from there on.
    void SetFirstState(QTextBlock line) const;
    int StateAfter(const QTextBlock& line, QStringView text, std::vector<LineSpan>* spans) const;
    // The line is the first dirty one.
    void Scan(const QTextBlock& line);

    QTextDocument& document_;
    std::shared_ptr<const LineScanner> scanner_;
    DirtyLines dirty_;
    int count_ = 0;
    std::vector<LineSpan> spans_;
};

}  // namespace quarv::forms
