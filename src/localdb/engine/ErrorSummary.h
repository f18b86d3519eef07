// ErrorSummary: an error that sums up others ("See previous errors"), or after which the client is
// told that the statement was terminated while it was at work on rows.
#pragma once

#include <vector>

#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

class ErrorSummary : public SqlError {
  public:
    explicit ErrorSummary(const SqlError& error);

    // The client hears of `cause`, and of what it sums up, first.
    ErrorSummary& After(const SqlError& cause);
    // Message 3621 follows.
    ErrorSummary& EndingStatement();

    // What a constraint or an index that cannot be made raises, inside CREATE TABLE and ALTER
    // TABLE: 1750 behind the cause, or the cause alone where it is none of a constraint's or 1750
    // follows it anyway.
    static ErrorSummary OfConstraint(const SqlError& cause);

    // What is said before the error itself; nothing for any other error.
    static std::vector<Message> CausesOf(const SqlError& error);
    static bool EndsStatement(const SqlError& error);

  private:
    std::vector<Message> causes_;
    bool endsStatement_ = false;
};

}  // namespace quarv::localdb::engine
