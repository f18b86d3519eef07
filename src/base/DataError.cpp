#include "base/DataError.h"

#include <utility>

namespace quarv {

DataError::DataError(int number, QString description, QString sqlState, int nativeError, int line)
    : Error(number, std::move(description)),
      sqlState_(std::move(sqlState)),
      nativeError_(nativeError),
      line_(line) {}

}  // namespace quarv
