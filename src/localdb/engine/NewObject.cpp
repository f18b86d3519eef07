#include "localdb/engine/NewObject.h"

#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

// A schema goes by its own name, however it was written.
ObjectInfo NewObject(Metadata& metadata, const tsql::ObjectName& name, const QString& type) {
    const std::optional<int> schema = metadata.FindSchema(name.schema);
    if (!schema || Metadata::IsSystemSchema(*schema))
        throw SqlError(2760, {name.schema}, name.line);
    ObjectInfo object;
    object.schemaId = *schema;
    object.schema = metadata.SchemaName(*schema);
    object.name = name.name;
    object.type = type;
    return object;
}

}  // namespace quarv::localdb::engine
