// Diagnostics: what the driver manager and the driver say about the last call on a handle, read
// once, without the prefixes that name the layers it passed through.
#pragma once

#include <sql.h>

#include <QString>
#include <vector>

#include "base/DataError.h"

namespace quarv::ado::odbc {

struct DiagnosticRecord {
    QString sqlState;
    int nativeError = 0;
    QString message;   // without prefixes
    int line = 0;      // 1-based within the batch; 0 where unknown
    int severity = 0;  // as the server counts it; 0 where unknown

    // A note that accompanies success, by its class "01".
    bool IsNote() const { return sqlState.startsWith(QLatin1String("01")); }
    // The driver's own number, not the server's.
    bool IsFromDriver() const;
};

class Diagnostics {
  public:
    // Must directly follow the call it reads about. `type` is SQL_HANDLE_ENV, _DBC or _STMT.
    Diagnostics(SQLSMALLINT type, SQLHANDLE handle);
    explicit Diagnostics(std::vector<DiagnosticRecord> records) : records_(std::move(records)) {}

    const std::vector<DiagnosticRecord>& Records() const { return records_; }
    // The first record that is an error, else the first one; null where there is none.
    const DiagnosticRecord* Cause() const;
    bool HasState(const char* sqlState) const;
    // The server says why it ends the session; the connection is lost behind it.
    bool EndsSession() const;
    // The first record with one of the numbers, in the order of the numbers; null where none has.
    const DiagnosticRecord* FindNative(std::initializer_list<int> numbers) const;

    // The error of a failed statement. `lost`: the connection is dead, which says more than the
    // driver's words, though not more than the server's last ones.
    DataError StatementError(bool lost) const;

  private:
    std::vector<DiagnosticRecord> records_;
};

// `message` without the driver's and the driver manager's leading "[...]".
QString WithoutPrefixes(const QString& message);

}  // namespace quarv::ado::odbc
