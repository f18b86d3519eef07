// What a row that breaks a constraint is answered with: SqlError 547, for whichever statement met
// it.
#pragma once

#include "localdb/engine/Metadata.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

// `statement` is "INSERT", "UPDATE", "MERGE", "ALTER TABLE".
SqlError CheckConflict(const QString& statement, const CheckInfo& check, const TableInfo& table,
                       const Metadata& metadata);
// A key that finds no row; SqlError 945 where the catalogue has lost its table.
SqlError ForeignKeyConflict(const QString& statement, const ForeignKeyInfo& key,
                            Metadata& metadata);

}  // namespace quarv::localdb::engine
