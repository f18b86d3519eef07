// AlterIndex: ALTER INDEX ... REBUILD and REORGANIZE. What would change an index is refused.
#pragma once

#include "localdb/tsql/ObjectName.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct AlterIndex : Statement {
    AlterIndex() : Statement(StatementType::AlterIndex) {}
    QString index;  // empty: all of the table
    ObjectName table;
};

StatementPtr ParseAlterIndex(TokenReader& reader);

}  // namespace quarv::localdb::tsql
