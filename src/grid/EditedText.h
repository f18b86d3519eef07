// EditedText: what the text editor of a cell shows of the cell's text, and what the text becomes by
// the user's edits. An editor of one line lays out all that it holds at every step, so of a very
// long text it gets the beginning alone, and behind it a mark that stands for the rest. It knows no
// widget.
#pragma once

#include <QString>

namespace quarv {

class EditedText {
  public:
    // A longer text, in UTF-16 units, is not shown whole.
    static constexpr qsizetype MostShown = 0x10000;

    EditedText() = default;
    explicit EditedText(const QString& whole);

    // For the editor: the whole text, or its beginning and the mark, "… [1234 more]".
    const QString& Shown() const { return shown_; }
    // The whole text where the editor holds `edited` now. The rest stands where the mark does, with
    // what was typed before and behind it; a mark that the user removed took the rest with it.
    QString Whole(const QString& edited) const;
    // UTF-16 units that the whole text has more than the editor shows.
    qsizetype Hidden() const { return rest_.size() - mark_.size(); }

  private:
    QString shown_;
    QString mark_;  // empty where the whole text is shown
    QString rest_;
};

}  // namespace quarv
