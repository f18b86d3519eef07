// TargetTable: the table that a statement changes, with its database's catalogue.
#pragma once

#include "localdb/engine/BindContext.h"

namespace quarv::localdb::engine {

struct TargetTable {
    Metadata metadata;
    TableInfo table;
    std::shared_ptr<TableInfo> variable;  // of a table variable, else nothing

    // Raises SqlError 208 where there is no such table, 259 for a view of the system's and 40517
    // for another view; `verb` names the statement then.
    static TargetTable Open(const tsql::ObjectName& name, BindContext& context,
                            const QString& verb);
};

}  // namespace quarv::localdb::engine
