// DropObject: DROP TABLE, VIEW, PROCEDURE, DATABASE or INDEX, each with IF EXISTS and several
// names.
#pragma once

#include <vector>

#include "localdb/tsql/ObjectName.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

enum class DropKind : uint8_t { Table, View, Procedure, Database, Index };

struct DropObject : Statement {
    DropObject() : Statement(StatementType::DropObject) {}
    struct Target {
        ObjectName name;
        ObjectName table;  // of an index
    };
    DropKind kind = DropKind::Table;
    bool ifExists = false;
    std::vector<Target> targets;
};

StatementPtr ParseDrop(TokenReader& reader);

}  // namespace quarv::localdb::tsql
