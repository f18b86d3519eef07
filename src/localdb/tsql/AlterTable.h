// AlterTable: ALTER TABLE with one of its clauses: ADD, DROP, ALTER COLUMN, CHECK or NOCHECK
// CONSTRAINT.
#pragma once

#include "localdb/tsql/Statement.h"
#include "localdb/tsql/TableElements.h"

namespace quarv::localdb::tsql {

struct AlterTable : Statement {
    enum class Clause : uint8_t { Add, Drop, AlterColumn, Enable, Disable, Rebuild };
    // What WITH CHECK and WITH NOCHECK say about the rows that are there.
    enum class RowCheck : uint8_t { Unsaid, Check, NoCheck };
    struct DroppedItem {
        bool column = false;  // else a constraint
        bool ifExists = false;
        QString name;
        int line = 0;
    };

    AlterTable() : Statement(StatementType::AlterTable) {}
    ObjectName name;
    Clause clause = Clause::Add;
    RowCheck rowCheck = RowCheck::Unsaid;
    TableElements added;
    std::vector<DroppedItem> dropped;
    ColumnDefinition column;           // of ALTER COLUMN: its name, type and nullability
    std::vector<QString> constraints;  // to enable or disable; none: all
};

StatementPtr ParseAlterTable(TokenReader& reader);

}  // namespace quarv::localdb::tsql
