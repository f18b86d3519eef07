// Delete and Truncate: DELETE [TOP (n)] [FROM] target [OUTPUT ...] [FROM ...] [WHERE ...], whose
// target is a table or the alias of one in FROM, and TRUNCATE TABLE.
#pragma once

#include "localdb/tsql/Output.h"
#include "localdb/tsql/Query.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

struct Delete : Statement {
    Delete() : Statement(StatementType::Delete) {}
    NamedTable target;
    std::unique_ptr<OutputClause> output;  // or nothing
    Query rows;                            // TOP, FROM and WHERE; no items
};

struct Truncate : Statement {
    Truncate() : Statement(StatementType::Truncate) {}
    ObjectName table;
};

StatementPtr ParseDelete(TokenReader& reader);
StatementPtr ParseTruncate(TokenReader& reader);

}  // namespace quarv::localdb::tsql
