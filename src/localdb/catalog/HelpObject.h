// HelpObject: the result sets of sp_help, one function each.
#pragma once

#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

// All objects of the database: sp_help without a name.
void HelpAllObjects(engine::SystemCall& call);

// Name, owner, type, time of creation.
void HelpHead(engine::SystemCall& call, const engine::ObjectInfo& object);
void HelpColumns(engine::SystemCall& call, const engine::TableInfo& table);
void HelpIdentity(engine::SystemCall& call, const engine::TableInfo& table);
void HelpRowGuid(engine::SystemCall& call, const engine::TableInfo& table);
void HelpFilegroup(engine::SystemCall& call);
// No result set where there are none.
void HelpParameters(engine::SystemCall& call, const engine::ObjectInfo& object);

}  // namespace quarv::localdb::catalog
