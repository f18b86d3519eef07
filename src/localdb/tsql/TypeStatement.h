// TypeStatement: CREATE TYPE name FROM a system type, and DROP TYPE. Table types and those of
// assemblies are refused by name.
#pragma once

#include "localdb/tsql/ObjectName.h"
#include "localdb/tsql/Statement.h"
#include "localdb/tsql/TypeName.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct TypeStatement : Statement {
    TypeStatement() : Statement(StatementType::Type) {}
    bool drops = false;
    bool ifExists = false;  // of DROP
    ObjectName name;
    TypeName base;  // of CREATE
    bool nullable = true;
};

StatementPtr ParseCreateType(TokenReader& reader);
StatementPtr ParseDropType(TokenReader& reader);

}  // namespace quarv::localdb::tsql
