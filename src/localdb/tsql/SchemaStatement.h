// SchemaStatement: CREATE SCHEMA, DROP SCHEMA and ALTER SCHEMA ... TRANSFER. What a schema is made
// with (tables, views, rights) is refused by name.
#pragma once

#include "localdb/tsql/ObjectName.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

enum class SchemaVerb : uint8_t { Create, Drop, Transfer };

struct SchemaStatement : Statement {
    SchemaStatement() : Statement(StatementType::Schema) {}
    SchemaVerb verb = SchemaVerb::Create;
    QString name;
    QString owner;               // of CREATE; empty: not said
    bool ifExists = false;       // of DROP
    bool transfersType = false;  // TYPE::, else an object
    ObjectName object;           // of TRANSFER
};

StatementPtr ParseCreateSchema(TokenReader& reader);
StatementPtr ParseDropSchema(TokenReader& reader);
StatementPtr ParseAlterSchema(TokenReader& reader);

}  // namespace quarv::localdb::tsql
