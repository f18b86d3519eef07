#include "localdb/engine/ColumnDependents.h"

#include <algorithm>

#include "localdb/engine/RowExpression.h"

namespace quarv::localdb::engine {

namespace {

using Kind = ColumnDependent::Kind;

bool Reads(Frame& frame, const TableInfo& table, const QString& text, RowExpression::Kind kind,
           const ColumnInfo& column) {
    const RowExpression expression(frame, table, text, kind);
    return expression.Columns().contains(table.PlaceOf(column.id));
}

bool UsesColumn(Frame& frame, const TableInfo& table, const IndexInfo& index,
                const ColumnInfo& column) {
    const bool key = std::any_of(index.keys.begin(), index.keys.end(),
                                 [&column](const auto& k) { return k.columnId == column.id; });
    return key ||
           std::find(index.included.begin(), index.included.end(), column.id) !=
               index.included.end() ||
           (!index.filter.isEmpty() &&
            Reads(frame, table, index.filter, RowExpression::Kind::Condition, column));
}

bool IsOfKey(const ForeignKeyInfo& key, const ColumnInfo& column, bool referenced) {
    return std::any_of(key.columns.begin(), key.columns.end(), [&](const auto& pair) {
        return (referenced ? pair.referencedId : pair.columnId) == column.id;
    });
}

}  // namespace

std::vector<ColumnDependent> FindDependents(Frame& frame, const TableInfo& table,
                                            const ColumnInfo& column) {
    std::vector<ColumnDependent> found;
    for (const IndexInfo& index : table.indexes) {
        if (!UsesColumn(frame, table, index, column)) continue;
        const Kind key = index.primary ? Kind::PrimaryKey : Kind::Unique;
        found.push_back({index.constraintId != 0 ? key : Kind::Index, index.name});
    }
    for (const ForeignKeyInfo& key : table.foreignKeys) {
        if (IsOfKey(key, column, false)) found.push_back({Kind::ForeignKey, key.name});
    }
    for (const ForeignKeyInfo& key : table.references) {
        const bool told = key.IsWithinTable() && IsOfKey(key, column, false);
        if (IsOfKey(key, column, true) && !told) found.push_back({Kind::ForeignKey, key.name});
    }
    for (const CheckInfo& check : table.checks) {
        if (Reads(frame, table, check.text, RowExpression::Kind::Condition, column)) {
            found.push_back({Kind::Check, check.name});
        }
    }
    if (column.defaultId != 0) found.push_back({Kind::Default, column.defaultName});
    for (const ColumnInfo& other : table.columns) {
        if (other.id == column.id || !other.IsComputed()) continue;
        if (Reads(frame, table, other.computedText, RowExpression::Kind::Value, column)) {
            found.push_back({Kind::Computed, other.name});
        }
    }
    return found;
}

ErrorSummary DependentsError(const std::vector<ColumnDependent>& dependents,
                             const ColumnInfo& column, const QString& clause) {
    ErrorSummary error(SqlError(4922, {QStringLiteral("ALTER TABLE ") + clause, column.name}));
    for (const ColumnDependent& dependent : dependents) {
        const QString noun = dependent.kind == Kind::Index      ? QStringLiteral("index")
                             : dependent.kind == Kind::Computed ? QStringLiteral("column")
                                                                : QStringLiteral("object");
        error.After(
            SqlError(5074, {noun, dependent.name, QStringLiteral("column '%1'").arg(column.name)}));
    }
    return error;
}

}  // namespace quarv::localdb::engine
