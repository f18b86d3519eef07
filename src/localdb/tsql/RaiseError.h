// RaiseError: RAISERROR (message, severity, state, arguments) WITH options.
#pragma once

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct RaiseError : Statement {
    RaiseError() : Statement(StatementType::RaiseError) {}
    // Each is a constant or a variable.
    ExpressionPtr message, severity, state;
    ExpressionList arguments;
    bool log = false;
    bool noWait = false;
    bool setError = false;
};

StatementPtr ParseRaiseError(TokenReader& reader);

}  // namespace quarv::localdb::tsql
