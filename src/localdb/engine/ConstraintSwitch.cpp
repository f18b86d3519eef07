#include "localdb/engine/ConstraintSwitch.h"

#include <algorithm>

#include "localdb/engine/ErrorSummary.h"
#include "localdb/engine/ExistingRows.h"

namespace quarv::localdb::engine {

// A constraint that was disabled or is taken on trust may not hold for every row; only WITH CHECK
// asks them again.
template <typename Constraint>
void ConstraintSwitch::Set(const Constraint& constraint) {
    const bool enables = node_.clause == tsql::AlterTable::Clause::Enable;
    const bool asks = enables && node_.rowCheck == tsql::AlterTable::RowCheck::Check;
    if (asks) ExistingRows(frame_, metadata_, table_).Check(constraint);
    const bool kept = enables && constraint.trusted && !constraint.disabled;
    metadata_.SetConstraintState(constraint.id, !enables, asks || kept);
}

void ConstraintSwitch::Change() {
    if (node_.constraints.empty()) {
        for (const CheckInfo& check : table_.checks) Set(check);
        for (const ForeignKeyInfo& key : table_.foreignKeys) Set(key);
    }
    for (const QString& name : node_.constraints) Find(name);
}

void ConstraintSwitch::Find(const QString& name) {
    for (const CheckInfo& check : table_.checks) {
        if (!SameName(check.name, name)) continue;
        Set(check);
        return;
    }
    for (const ForeignKeyInfo& key : table_.foreignKeys) {
        if (!SameName(key.name, name)) continue;
        Set(key);
        return;
    }
    const bool other =
        std::any_of(table_.indexes.begin(), table_.indexes.end(),
                    [&name](const IndexInfo& index) {
                        return index.constraintId != 0 && SameName(index.name, name);
                    }) ||
        std::any_of(table_.columns.begin(), table_.columns.end(),
                    [&name](const ColumnInfo& column) {
                        return column.defaultId != 0 && SameName(column.defaultName, name);
                    });
    throw ErrorSummary(SqlError(4916)).After(SqlError(other ? 11415 : 4917, {name}));
}

}  // namespace quarv::localdb::engine
