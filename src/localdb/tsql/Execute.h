// Execute: EXEC [@status =] procedure or @variable [arguments], and the same without the word where
// it opens a batch. EXEC ('text') runs text.
#pragma once

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct ExecuteArgument {
    QString name;         // "@x" of "@x = value", else empty
    ExpressionPtr value;  // a constant, a variable or DEFAULT
    bool output = false;
};

struct Execute : Statement {
    Execute() : Statement(StatementType::Execute) {}
    QString status;  // the variable that takes the return status, else empty
    ObjectName procedure;
    QString procedureVariable;  // EXEC @name: the variable that holds the name, else empty
    std::vector<ExecuteArgument> arguments;
    ExpressionPtr text;  // of EXEC ('text'), else nothing
};

StatementPtr ParseExecute(TokenReader& reader);
// True where a procedure's name stands without EXECUTE before it.
bool IsBareCall(TokenReader& reader);

}  // namespace quarv::localdb::tsql
