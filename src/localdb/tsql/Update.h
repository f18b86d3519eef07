// Update: UPDATE [TOP (n)] target SET ... [OUTPUT ...] [FROM ...] [WHERE ...]. The target is a
// table or the alias of one in FROM.
#pragma once

#include "localdb/tsql/Output.h"
#include "localdb/tsql/Query.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

struct Update : Statement {
    Update() : Statement(StatementType::Update) {}
    // column = value, @variable = value, or both: @variable = column = value.
    struct Assignment {
        ObjectName column;    // its name is empty: only a variable is assigned
        QString variable;     // with its "@", or empty
        char16_t sign = 0;    // of a compound assignment ("+="), else 0
        ExpressionPtr value;  // the word DEFAULT included
        int line = 0;
    };

    NamedTable target;
    std::vector<Assignment> assignments;
    std::unique_ptr<OutputClause> output;  // or nothing
    Query rows;                            // TOP, FROM and WHERE; no items
};

StatementPtr ParseUpdate(TokenReader& reader);

}  // namespace quarv::localdb::tsql
