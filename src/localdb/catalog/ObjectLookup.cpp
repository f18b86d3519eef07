#include "localdb/catalog/ObjectLookup.h"

#include "localdb/engine/SqlError.h"
#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::catalog {

using engine::SqlError;
using engine::SystemCall;

std::optional<engine::ObjectInfo> LookUpObject(SystemCall& call, const QString& name) {
    const std::optional<tsql::ObjectName> parts = tsql::ParseLooseName(name);
    if (!parts || !parts->server.isEmpty()) return std::nullopt;
    if (!parts->database.isEmpty() && !engine::SameName(parts->database, call.Database().name)) {
        throw SqlError(15250);
    }
    return call.GetMetadata().Find(parts->schema, parts->name);
}

engine::ObjectInfo FindObject(SystemCall& call, const QString& name) {
    const std::optional<engine::ObjectInfo> object = LookUpObject(call, name);
    if (!object) throw SqlError(15009, {name, call.Database().name});
    return *object;
}

std::optional<engine::ObjectInfo> FindTable(SystemCall& call, const QString& name,
                                            const QString& owner) {
    std::optional<engine::ObjectInfo> object = call.GetMetadata().Find(owner, name);
    if (object && object->type != u"U" && object->type != u"V") return std::nullopt;
    return object;
}

void CheckQualifier(const SystemCall& call, size_t argument) {
    const QString qualifier = call.Text(argument);
    if (!qualifier.isEmpty() && !engine::SameName(qualifier, call.Database().name)) {
        throw SqlError(15250);
    }
}

QString KeyText(const engine::TableInfo& table, const engine::IndexInfo& index) {
    QStringList parts;
    for (const engine::IndexInfo::Key& key : index.keys) {
        const engine::ColumnInfo* column = table.FindColumn(key.columnId);
        if (column) parts += key.descending ? column->name + QStringLiteral("(-)") : column->name;
    }
    return parts.join(QStringLiteral(", "));
}

}  // namespace quarv::localdb::catalog
