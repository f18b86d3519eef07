// SystemVariables: "@@name" and the functions without arguments that ask the session.
#pragma once

#include "localdb/engine/BoundNodes.h"

namespace quarv::localdb::engine {

// Raises SqlError 137 for a name that is none.
BoundPtr BindSystemVariable(const QString& name);
BoundPtr MakeSystemValue(SystemValue what);

}  // namespace quarv::localdb::engine
