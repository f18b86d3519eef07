// ObjectColumns: the columns that sys.objects and all views over it begin with.
#pragma once

#include "localdb/catalog/ViewBuilder.h"

namespace quarv::localdb::catalog {

// char(2), of the object "o".
inline constexpr const char* ObjectType = "substr(o.type || ' ', 1, 2)";

// name to is_schema_published, of an object "o" with the columns of $q_objects. `shipped` is what
// is_ms_shipped shows.
void AddObjectColumns(ViewBuilder& view, const char* shipped = "0");

}  // namespace quarv::localdb::catalog
