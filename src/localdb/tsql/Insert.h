// Insert: INSERT [INTO] table [(columns)] VALUES rows, DEFAULT VALUES or a query.
#pragma once

#include "localdb/tsql/Query.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

struct Insert : Statement {
    Insert() : Statement(StatementType::Insert) {}
    static constexpr int MaxRows = 1000;  // of one VALUES list

    ObjectName table;
    std::vector<QString> columns;  // empty: all but the identity column
    // One of the three; no rows and no query: DEFAULT VALUES.
    std::vector<ExpressionList> rows;
    std::unique_ptr<Query> query;
};

StatementPtr ParseInsert(TokenReader& reader);

}  // namespace quarv::localdb::tsql
