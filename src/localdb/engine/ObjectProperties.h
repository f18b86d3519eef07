// ObjectProperties: what OBJECTPROPERTY, COLUMNPROPERTY and INDEXPROPERTY tell, by the property's
// name. Each is empty for a name or an object that there is not.
#pragma once

#include <optional>

#include "localdb/engine/Metadata.h"

namespace quarv::localdb::engine {

// `property` in lower case.
std::optional<int64_t> ObjectProperty(Metadata& metadata, int64_t objectId,
                                      const QString& property);
// Of a column, or of a procedure's parameter with its "@".
std::optional<int64_t> ColumnProperty(Metadata& metadata, int64_t objectId, const QString& column,
                                      const QString& property);
std::optional<int64_t> IndexProperty(Metadata& metadata, int64_t objectId, const QString& index,
                                     const QString& property);

}  // namespace quarv::localdb::engine
