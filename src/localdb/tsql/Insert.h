// Insert: INSERT [TOP (n)] [INTO] table [(columns)] [OUTPUT ...] VALUES rows, DEFAULT VALUES, a
// query or EXECUTE.
#pragma once

#include "localdb/tsql/Execute.h"
#include "localdb/tsql/Output.h"
#include "localdb/tsql/Query.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

struct Insert : Statement {
    Insert() : Statement(StatementType::Insert) {}
    static constexpr int MaxRows = 1000;  // of one VALUES list

    ObjectName table;
    std::vector<QString> columns;          // empty: all but the identity column
    Query limit;                           // its TOP, nothing else
    std::unique_ptr<OutputClause> output;  // or nothing
    // One of the four; none of them: DEFAULT VALUES.
    std::vector<ExpressionList> rows;
    std::unique_ptr<Query> query;
    std::unique_ptr<Execute> execute;
};

StatementPtr ParseInsert(TokenReader& reader);

}  // namespace quarv::localdb::tsql
