// ObjectLookup: how the system procedures find what their arguments name.
#pragma once

#include <optional>

#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

// The object by a name of one to three parts, quoted or not. Raises SqlError 15250 where it names
// another database than the call's, 15009 where there is no such object.
engine::ObjectInfo FindObject(engine::SystemCall& call, const QString& name);
// The same where there may be none; raises 15250 alone.
std::optional<engine::ObjectInfo> LookUpObject(engine::SystemCall& call, const QString& name);

// A table or view by the separate arguments of the catalogue procedures, without patterns.
std::optional<engine::ObjectInfo> FindTable(engine::SystemCall& call, const QString& name,
                                            const QString& owner);

// Raises SqlError 15250 where the qualifier is given and is not the call's database.
void CheckQualifier(const engine::SystemCall& call, size_t argument);

// "a, b(-)": the columns of a key, descending ones marked.
QString KeyText(const engine::TableInfo& table, const engine::IndexInfo& index);

}  // namespace quarv::localdb::catalog
