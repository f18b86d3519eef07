// StoredResult: rows read ahead into memory, because their connection was needed for another
// command. Rows lie one behind another in blocks that are given back as they are passed.
#pragma once

#include <deque>
#include <memory>
#include <optional>

#include "base/DataError.h"
#include "platform/ado/odbc/Result.h"

namespace quarv::ado::odbc {

class StoredResult : public Result {
  public:
    // Reads all that is left of `source`: with `onRow`, its current row too, which becomes the
    // current row here. An error of the reading is kept and raised behind the last row.
    StoredResult(Result& source, bool onRow);

    const std::vector<Column>& Columns() const override { return columns_; }
    bool Fetch() override;
    Cell Read(std::size_t column) override;

  private:
    // A row is, cell by cell, the length (qint64, Cell::NullLength for null) and the bytes,
    // an even number of them.
    struct Block {
        std::vector<char> bytes;
    };

    void Append(Result& source);
    void FindCells();

    std::vector<Column> columns_;
    std::deque<Block> blocks_;
    std::vector<char> building_;  // the row being read
    std::size_t at_ = 0;          // where the next row begins in the first block
    std::vector<Cell> cells_;     // of the current row
    std::optional<DataError> error_;
};

}  // namespace quarv::ado::odbc
