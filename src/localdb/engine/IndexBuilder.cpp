// The keys and columns of indexes and key constraints, as TableBuilder declares them.
#include <algorithm>

#include "localdb/engine/IndexFilter.h"
#include "localdb/engine/RowExpression.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TableBuilder.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

int NextIndexId(const TableInfo& table, bool clustered) {
    int id = 1;
    for (const IndexInfo& other : table.indexes) id = std::max(id, other.id);
    return clustered ? 1 : id + 1;
}

size_t FindKeyColumn(Frame& frame, TableInfo& table, const QString& name) {
    const ColumnInfo* found = table.FindColumn(name);
    if (!found) throw SqlError(1911, {name});
    ColumnInfo& column = table.columns[table.PlaceOf(found->id)];
    if (column.type.length == SqlType::Max) {
        throw SqlError(1919, {name, table.object.name});
    }
    if (column.IsComputed() && !column.stored) {
        const RowExpression value(frame, table, column.computedText, RowExpression::Kind::Value);
        if (!value.IsDeterministic()) throw SqlError(2729, {name, table.object.name});
        column.stored = true;
    }
    return table.PlaceOf(column.id);
}

namespace {

void AddKeyColumns(Frame& frame, TableInfo& table, const tsql::IndexDefinition& definition,
                   IndexInfo& index) {
    const auto isKey = [&index](int id) {
        return std::any_of(index.keys.begin(), index.keys.end(),
                           [id](const IndexInfo::Key& key) { return key.columnId == id; });
    };
    for (const tsql::KeyColumn& key : definition.keys) {
        const int id = table.columns[FindKeyColumn(frame, table, key.name)].id;
        if (isKey(id)) throw SqlError(1909, {key.name});
        index.keys.push_back({id, key.descending});
    }
    for (const QString& name : definition.included) {
        const ColumnInfo* column = table.FindColumn(name);
        if (!column) throw SqlError(1911, {name});
        const bool twice = std::find(index.included.begin(), index.included.end(), column->id) !=
                           index.included.end();
        if (twice || isKey(column->id)) throw SqlError(1909, {name});
        index.included.push_back(column->id);
    }
}

}  // namespace

IndexInfo BuildIndex(Frame& frame, TableInfo& table, const tsql::IndexDefinition& definition,
                     const QString& tableName) {
    IndexInfo index;
    index.name = definition.name;
    index.unique = definition.unique;
    index.clustered = definition.clustered;
    for (const IndexInfo& other : table.indexes) {
        if (SameName(other.name, definition.name)) {
            throw SqlError(1913, {definition.name, tableName});
        }
        if (definition.clustered && other.clustered) {
            throw SqlError(1902, {tableName, other.name});
        }
    }
    index.id = NextIndexId(table, index.clustered);
    if (index.clustered && !definition.included.empty()) throw SqlError(10601);
    if (index.clustered && definition.filter) throw SqlError(10609, {definition.name, tableName});
    AddKeyColumns(frame, table, definition, index);
    if (definition.filter) {
        index.filter = IndexFilter::Text(table, *definition.filter, definition.name);
    }
    return index;
}

}  // namespace quarv::localdb::engine
