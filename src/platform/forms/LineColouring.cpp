#include "platform/forms/LineColouring.h"

#include <QTextDocument>

namespace quarv::forms {

void LineColouring::SetScanner(std::shared_ptr<const LineScanner> scanner) {
    scanner_ = std::move(scanner);
    count_ = document_.blockCount();
    dirty_.SetAll(scanner_ ? count_ : 0);
    SetFirstState(document_.begin());
}

void LineColouring::Edited(int position, int added) {
    if (!scanner_) return;
    const QTextBlock first = document_.findBlock(position);
    const QTextBlock last = document_.findBlock(position + added);
    const int count = document_.blockCount();
    const int from = first.isValid() ? first.blockNumber() : count - 1;
    const int to = last.isValid() ? last.blockNumber() : count - 1;
    // A line that came or went may have left its place to a block with another state or none.
    const bool sameLine = from == to && count == count_ && first.userState() >= 0;
    if (!sameLine) SetFirstState(document_.findBlockByNumber(from));
    dirty_.Replace(from, to, count);
    count_ = count;
}

void LineColouring::SetFirstState(QTextBlock line) const {
    const QTextBlock before = line.previous();
    if (!before.isValid())
        line.setUserState(LineScanner::FirstState);
    else if (before.userState() >= 0)
        line.setUserState(StateAfter(before, before.text(), nullptr));
}

bool LineColouring::Reach(const QTextBlock& line) {
    const int number = line.blockNumber();
    if (dirty_.First() > number) return false;
    QTextBlock at = document_.findBlockByNumber(dirty_.First());
    for (int expected = dirty_.First(); dirty_.First() < number; at = at.next(), ++expected) {
        // Where the run that was edited ends, lines may be left out.
        if (dirty_.First() != expected) {
            expected = dirty_.First();
            at = document_.findBlockByNumber(expected);
        }
        Scan(at);
    }
    if (dirty_.First() != number) return false;
    Scan(line);
    return true;
}

const std::vector<LineSpan>& LineColouring::Spans(const QTextBlock& line, QStringView text) {
    spans_.clear();
    if (scanner_) StateAfter(line, text, &spans_);
    return spans_;
}

int LineColouring::StateAfter(const QTextBlock& line, QStringView text,
                              std::vector<LineSpan>* spans) const {
    return scanner_->Scan(text, line.userState(), spans);
}

void LineColouring::Scan(const QTextBlock& line) {
    const int state = StateAfter(line, line.text(), nullptr);
    QTextBlock next = line.next();
    const bool asBefore = next.isValid() && next.userState() == state;
    if (next.isValid()) next.setUserState(state);
    dirty_.Scanned(asBefore);
}

}  // namespace quarv::forms
