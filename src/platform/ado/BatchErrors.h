// BatchErrors: running the rest of a batch to its end with no error lost. Free functions over the
// interfaces; they know no driver.
#pragma once

#include <deque>

#include "base/DataError.h"
#include "platform/ado/Connection.h"

namespace quarv::ado {

using DataErrors = std::deque<DataError>;

// No further answer comes over the connection: by the SQLSTATE's class 08, "connection exception",
// or, where the server said other last words, by what the connection knows.
bool IsLost(const Connection& connection, const DataError& error);

// As IsLost, and closes what was lost.
bool ClosedAsLost(Connection& connection, const DataError& error);

// Runs the batch behind the current result of `records` (null: there is nothing left) to its end,
// or to the loss of the connection; the errors met, in their order.
DataErrors ErrorsOfRest(Connection& connection, RecordsetPtr records);

// `first` with the descriptions of `later` below its own, a line each; of many the first ones and
// how many more there were.
DataError WithLater(const DataError& first, const DataErrors& later);

}  // namespace quarv::ado
