// ErrorRules: what an error does beyond its message, by its number: how much of what runs it ends,
// whether the transaction goes with it, which message follows.
#pragma once

#include "localdb/tsql/Statement.h"

namespace quarv::localdb::engine {

class ErrorRules {
  public:
    // Found before the statement runs, where names and types are looked up: a CATCH block of the
    // same batch or procedure never sees it.
    static bool IsCompileError(int number);
    // Whether an error of compiling belongs to the text that the statement stands in. What EXECUTE
    // tells of the text that it runs does not; INSERT ... EXECUTE looks up names of its own too.
    static bool IsOwn(int number, const tsql::Statement& statement);
    // Found while a statement changes rows: message 3621 tells that it was undone.
    static bool TerminatesStatement(int number);
    // Ends the batch or procedure in which it happens; what called that goes on.
    static bool EndsScope(int number);
    // Ends the whole batch and undoes the transaction.
    static bool EndsBatchAndTransaction(int number);
    // Ends the whole batch.
    static bool EndsBatch(int number);
    // A constraint could not be made: message 1750 follows.
    static bool IsConstraintFailure(int number);
};

}  // namespace quarv::localdb::engine
