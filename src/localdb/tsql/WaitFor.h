// WaitFor: WAITFOR DELAY and WAITFOR TIME.
#pragma once

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct WaitFor : Statement {
    WaitFor() : Statement(StatementType::WaitFor) {}
    bool untilTime = false;  // TIME; else DELAY
    ExpressionPtr time;      // a string or a variable
};

StatementPtr ParseWaitFor(TokenReader& reader);

}  // namespace quarv::localdb::tsql
