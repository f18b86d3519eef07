// Result: one rowset being walked forward: its columns, the next row, the current row's cells.
// Where the rows come from (driver, memory) is the implementation's business.
#pragma once

#include <vector>

#include "platform/ado/odbc/Cell.h"

namespace quarv::ado::odbc {

class Result {
  public:
    Result() = default;
    virtual ~Result() = default;
    Result(const Result&) = delete;
    Result& operator=(const Result&) = delete;

    virtual const std::vector<Column>& Columns() const = 0;
    // Steps to the next row, the first one at first; false past the last. Raises DataError where
    // reading fails; the rowset is then at its end.
    virtual bool Fetch() = 0;
    // The current row's cell of `column` (0-based); the same on every call, and valid until the
    // next Fetch or Read of another column. Raises DataError.
    virtual Cell Read(std::size_t column) = 0;
};

}  // namespace quarv::ado::odbc
