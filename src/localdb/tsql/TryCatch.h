// TryCatch: BEGIN TRY ... END TRY BEGIN CATCH ... END CATCH, and THROW.
#pragma once

#include "localdb/tsql/ControlFlow.h"

namespace quarv::localdb::tsql {

struct TryCatch : Statement {
    TryCatch() : Statement(StatementType::Try) {}
    Block body;
    Block handler;
};

struct Throw : Statement {
    Throw() : Statement(StatementType::Throw) {}
    // Constants or variables; nothing in a THROW that passes the caught error on.
    ExpressionPtr number, message, state;
};

// The word BEGIN was taken.
StatementPtr ParseTryCatch(TokenReader& reader);
StatementPtr ParseThrow(TokenReader& reader);

}  // namespace quarv::localdb::tsql
