// ColumnDependents: what of a table rests on one of its columns: keys, indexes, foreign keys of
// this and other tables, checks, its default, computed columns. Reads only.
#pragma once

#include <vector>

#include "localdb/engine/ErrorSummary.h"
#include "localdb/engine/Frame.h"

namespace quarv::localdb::engine {

struct ColumnDependent {
    enum class Kind : uint8_t { PrimaryKey, Unique, Index, ForeignKey, Check, Default, Computed };
    Kind kind;
    QString name;
};

// The table is loaded with its constraints.
std::vector<ColumnDependent> FindDependents(Frame& frame, const TableInfo& table,
                                            const ColumnInfo& column);
// SqlError 4922 behind one 5074 for each; `clause` is "DROP COLUMN" or "ALTER COLUMN".
ErrorSummary DependentsError(const std::vector<ColumnDependent>& dependents,
                             const ColumnInfo& column, const QString& clause);

}  // namespace quarv::localdb::engine
