#include "localdb/engine/TargetTable.h"

#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

TargetTable TargetTable::Open(const tsql::ObjectName& name, BindContext& context,
                              const QString& verb) {
    if (name.isVariable) {
        const std::shared_ptr<TableInfo>& variable = context.TableVariable(name);
        return {context.MetadataFor(name), *variable, variable};
    }
    if (context.System().FindView(name.schema, name.name)) throw SqlError(259, {}, name.line);
    Metadata metadata = context.MetadataFor(name);
    const std::optional<ObjectInfo> object = metadata.Find(name.schema, name.name);
    if (object && object->type == u"V") {
        throw SqlError(
            40517,
            {(verb == u"INSERT" ? QStringLiteral("INSERT into") : verb + QStringLiteral(" of")) +
             QStringLiteral(" a view")},
            name.line);
    }
    if (!object || object->type != u"U") throw SqlError(208, {name.ToText()}, name.line);
    return {metadata, metadata.LoadTable(*object), nullptr};
}

}  // namespace quarv::localdb::engine
