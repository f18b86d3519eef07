// HelpConstraints: what sp_helpconstraint tells of a table, which sp_help tells too.
#pragma once

#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

// The table's constraints by name, which have to be loaded; message 15469, with `name` as the
// caller wrote it, and no result set where it has none.
void HelpConstraints(engine::SystemCall& call, const engine::TableInfo& table, const QString& name);

// The foreign keys that refer to the table; message 15470 and no result set where there are none.
void HelpReferences(engine::SystemCall& call, const engine::TableInfo& table, const QString& name);

}  // namespace quarv::localdb::catalog
