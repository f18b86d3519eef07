// DataError: an error of the data-access layer. Number() is its signed 32-bit number (an HRESULT),
// Description() the server's own message without driver prefixes.
#pragma once

#include "base/Error.h"

namespace quarv {

class DataError : public Error {
  public:
    DataError(int number, QString description, QString sqlState = {}, int nativeError = 0,
              int line = 0);

    // Five characters of ISO SQLSTATE, or empty where the error did not come from a driver.
    const QString& SqlState() const { return sqlState_; }
    // The server's message number; 0 where the server did not speak.
    int NativeError() const { return nativeError_; }
    // 1-based line within the batch; 0 where unknown.
    int Line() const { return line_; }

  private:
    QString sqlState_;
    int nativeError_;
    int line_;
};

}  // namespace quarv
