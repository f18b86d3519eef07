// Select: a query as a statement of its own.
#pragma once

#include "localdb/tsql/Query.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

struct Select : Statement {
    Select() : Statement(StatementType::Select) {}
    std::unique_ptr<Query> query;
};

StatementPtr ParseSelect(TokenReader& reader);

}  // namespace quarv::localdb::tsql
