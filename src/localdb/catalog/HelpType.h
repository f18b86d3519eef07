// HelpType: what sp_help tells of a data type.
#pragma once

#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

// The type by a name of one or two parts: an alias type or one of the system's. Gives whether there
// is such a type; its result set then.
bool HelpType(engine::SystemCall& call, const QString& name);

// All alias types of the database.
void HelpAllTypes(engine::SystemCall& call);

}  // namespace quarv::localdb::catalog
