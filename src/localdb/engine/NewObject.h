// NewObject: what the catalogue is to know about an object that a statement names.
#pragma once

#include "localdb/engine/Metadata.h"
#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::engine {

// Its schema, name and type. Raises SqlError 2760 where there is no such schema, or one of the
// system's own, which take no objects.
ObjectInfo NewObject(Metadata& metadata, const tsql::ObjectName& name, const QString& type);

}  // namespace quarv::localdb::engine
