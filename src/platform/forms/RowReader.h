// RowReader: reads a result on for the grid that shows it and gathers the errors met meanwhile, to
// be told when nothing is half done. The grid owns it; it knows no widget.
#pragma once

#include <deque>

#include "base/Error.h"
#include "base/RowSource.h"

namespace quarv::forms {

using Errors = std::deque<quarv::Error>;

class RowReader {
  public:
    // A source that raises without end is left alone after so many errors in one go.
    static constexpr int MostErrors = 1000;

    // How many errors of one go are told one by one.
    static constexpr size_t MostTold = 5;

    // Not owned; null stands for no rows.
    void SetSource(RowSource* source) { source_ = source; }
    RowSource* Source() const { return source_; }

    bool AtEnd() const { return source_ == nullptr || source_->AtEnd(); }
    qint64 RowCount() const { return source_ == nullptr ? 0 : source_->RowCount(); }

    // Reads on until the 0-based `row` is there or the end is met, over errors too, which are
    // appended to `errors`. Does nothing while a call of it is running.
    void ReadTo(qint64 row, Errors& errors);

    // Leaves the first MostTold errors, the last of which says how many more there were.
    static void Condense(Errors& errors);

    // The 0-based row to read to where `top` is the first row on the screen and `screen` is how
    // many rows fill it; -1 where a screen more than shows is there. Another screen is read ahead
    // at first, two later on.
    static qint64 RowWanted(qint64 top, qint64 screen, qint64 rowCount);

  private:
    RowSource* source_ = nullptr;
    bool reading_ = false;
};

}  // namespace quarv::forms
