// ChangedSource: how a query that finds the rows to change reads its target: the columns of the
// table behind it and what tells one row from another, also where views and other queries stand
// between. QueryBinder fills it while it binds the target.
#pragma once

#include "localdb/engine/Scope.h"
#include "localdb/engine/TargetPath.h"
#include "localdb/engine/TextArena.h"

namespace quarv::localdb::engine {

struct ChangedSource {
    // Given: the target among the sources of FROM, the way to its table, and the storage's names
    // and types of what tells a row.
    const tsql::TableSource* source = nullptr;
    const TargetPath* path = nullptr;
    std::vector<std::string> keyNames;
    std::vector<SqlType> keyTypes;

    // Found: the place among the query's sources, the table's columns, the row's key, and by the
    // source's own columns the table's; nothing for one that is computed.
    size_t place = 0;
    std::vector<SourceColumn> base;
    std::vector<std::string> keySql;
    std::vector<std::optional<size_t>> places;
    // What every new row has to fulfil, a column's slot being its place in the table.
    std::vector<BoundPtr> checks;

    bool IsTable() const { return path->Layers().empty(); }
    // The name that messages give to the target.
    const QString& Name() const { return path->Layers().front().name; }
    // Raises SqlError 550 for a row, by the table's columns, that the view would not show.
    void Check(const std::vector<OwnedValue>& row, const Environment& environment) const;
};

}  // namespace quarv::localdb::engine
