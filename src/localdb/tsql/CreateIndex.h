// CreateIndex: CREATE [UNIQUE] [CLUSTERED | NONCLUSTERED] INDEX name ON table (columns) [INCLUDE
// (columns)] [WHERE condition], and the list of key columns that constraints share with it.
#pragma once

#include <vector>

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/ObjectName.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct KeyColumn {
    QString name;
    bool descending = false;
};

struct IndexDefinition {
    bool unique = false;
    bool clustered = false;
    QString name;
    std::vector<KeyColumn> keys;
    std::vector<QString> included;
    ExpressionPtr filter;  // or nothing
    int line = 0;
};

struct CreateIndex : Statement {
    CreateIndex() : Statement(StatementType::CreateIndex) {}
    IndexDefinition index;
    ObjectName table;
};

StatementPtr ParseCreateIndex(TokenReader& reader);
// "(a, b DESC)"
std::vector<KeyColumn> ParseKeyColumns(TokenReader& reader);
// INCLUDE, WHERE and the options behind an index's key columns.
void ParseIndexTail(TokenReader& reader, IndexDefinition& index);
// The options behind an index or a key that change nothing that a client can see are read over;
// the others are refused.
void ParseIndexOptions(TokenReader& reader);
// "ON [PRIMARY]", the filegroup that everything is in; `word` is what stands before it. False, and
// nothing taken, where anything else follows.
bool TryFilegroup(TokenReader& reader, QStringView word);

}  // namespace quarv::localdb::tsql
