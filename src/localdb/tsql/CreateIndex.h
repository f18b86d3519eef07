// CreateIndex: CREATE [UNIQUE] [CLUSTERED | NONCLUSTERED] INDEX name ON table (columns), and the
// list of key columns that constraints share with it.
#pragma once

#include <vector>

#include "localdb/tsql/ObjectName.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct KeyColumn {
    QString name;
    bool descending = false;
};

struct CreateIndex : Statement {
    CreateIndex() : Statement(StatementType::CreateIndex) {}
    bool unique = false;
    bool clustered = false;
    QString name;
    ObjectName table;
    std::vector<KeyColumn> keys;
};

StatementPtr ParseCreateIndex(TokenReader& reader);
// "(a, b DESC)"
std::vector<KeyColumn> ParseKeyColumns(TokenReader& reader);
// The options behind an index or a key that change nothing that a client can see are read over;
// the others are refused.
void ParseIndexOptions(TokenReader& reader);

}  // namespace quarv::localdb::tsql
