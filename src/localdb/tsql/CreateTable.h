// CreateTable: CREATE TABLE with its columns and constraints.
#pragma once

#include "localdb/tsql/CreateIndex.h"
#include "localdb/tsql/Expression.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

enum class Nullability : uint8_t { Unsaid, Null, NotNull };

struct ColumnDefinition {
    QString name;
    TypeName type;
    Nullability nullability = Nullability::Unsaid;
    bool identity = false;
    QString seed = QStringLiteral("1");       // as written, with its sign
    QString increment = QStringLiteral("1");  // likewise
    ExpressionPtr defaultValue;               // or nothing
    QString defaultName;                      // empty: the server names it
    int line = 0;
};

struct KeyConstraint {
    QString name;  // empty: the server names it
    bool primary = false;
    bool clusteredSaid = false;  // CLUSTERED or NONCLUSTERED was written
    bool clustered = false;
    std::vector<KeyColumn> keys;
    int line = 0;
};

struct CreateTable : Statement {
    CreateTable() : Statement(StatementType::CreateTable) {}
    ObjectName name;
    std::vector<ColumnDefinition> columns;
    std::vector<KeyConstraint> keys;
};

StatementPtr ParseCreateTable(TokenReader& reader);
// The columns and constraints in their parentheses.
void ParseTableElements(TokenReader& reader, CreateTable& table);

}  // namespace quarv::localdb::tsql
