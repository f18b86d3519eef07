// CreateTable: CREATE TABLE with its columns, constraints and indexes.
#pragma once

#include "localdb/tsql/Statement.h"
#include "localdb/tsql/TableElements.h"

namespace quarv::localdb::tsql {

struct CreateTable : Statement, TableElements {
    CreateTable() : Statement(StatementType::CreateTable) {}
    ObjectName name;
};

StatementPtr ParseCreateTable(TokenReader& reader);
// The columns and constraints in their parentheses.
void ParseTableElements(TokenReader& reader, TableElements& elements);

}  // namespace quarv::localdb::tsql
