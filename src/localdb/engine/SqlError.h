// SqlError: an error by SQL Server's number, severity, state and text, with the line where it
// happened. The numbers and texts are in MessageTable.
#pragma once

#include <QStringList>

#include "base/Error.h"
#include "localdb/engine/ResultSink.h"

namespace quarv::localdb::engine {

class SqlError : public Error {
  public:
    // Text, severity and state from the table; each "%" of the text takes the next insert.
    // `line` is 1-based; 0 where it is to be filled in by the statement that fails.
    explicit SqlError(int number, const QStringList& inserts = {}, int line = 0);
    // An error with a text of its own (not in the table).
    explicit SqlError(Message message);

    const Message& What() const { return message_; }
    void SetLine(int line) { message_.line = line; }

  private:
    Message message_;
};

// An error that THROW passes on: its message stays as it is, line and procedure included.
class Rethrown : public SqlError {
  public:
    using SqlError::SqlError;
};

}  // namespace quarv::localdb::engine
