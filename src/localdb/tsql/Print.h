// Print: PRINT expression.
#pragma once

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

struct Print : Statement {
    Print() : Statement(StatementType::Print) {}
    ExpressionPtr text;
};

StatementPtr ParsePrint(TokenReader& reader);

}  // namespace quarv::localdb::tsql
