#include "localdb/engine/TableDropper.h"

#include <algorithm>

#include "localdb/engine/ColumnDependents.h"
#include "localdb/engine/ErrorSummary.h"
#include "localdb/engine/TableChange.h"
#include "localdb/engine/TableStorage.h"

namespace quarv::localdb::engine {

// A column may go together with the constraints that rest on it, in whichever order they stand.
void TableDropper::Change() {
    for (const Item& item : node_.dropped) {
        if (!item.column) DropConstraint(item);
    }
    for (const Item& item : node_.dropped) {
        if (item.column) DropColumn(item);
    }
}

void TableDropper::Reload() {
    table_ = metadata_.LoadTable(*metadata_.Find(table_.object.id));
    metadata_.LoadConstraints(table_);
}

void TableDropper::DropConstraint(const Item& item) {
    try {
        if (TryDropKey(item.name) || TryDropOther(item.name)) {
            Reload();
            return;
        }
        if (item.ifExists) return;
        const std::optional<ObjectInfo> other = metadata_.Find(table_.object.schema, item.name);
        const bool constraint =
            other && (other->type == u"C" || other->type == u"D" || other->type == u"F" ||
                      other->type == u"PK" || other->type == u"UQ");
        if (constraint) throw SqlError(3733, {item.name, TableName()}, item.line);
        throw SqlError(3728, {item.name}, item.line);
    } catch (const SqlError& error) {
        const int number = error.Number();
        if (number != 3725 && number != 3728 && number != 3733) throw;
        throw ErrorSummary(SqlError(3727, {}, item.line)).After(error);
    }
}

bool TableDropper::TryDropKey(const QString& name) {
    const auto found =
        std::find_if(table_.indexes.begin(), table_.indexes.end(), [&name](const IndexInfo& index) {
            return index.constraintId != 0 && SameName(index.name, name);
        });
    if (found == table_.indexes.end()) return false;
    for (const ForeignKeyInfo& key : table_.references) {
        if (key.keyIndex != found->id) continue;
        const std::optional<ObjectInfo> child = metadata_.Find(key.tableId);
        throw SqlError(3725, {found->name, child ? child->name : QString(), key.name});
    }
    const IndexInfo index = *found;
    if (index.storageKey) {
        TableInfo after = table_;
        std::erase_if(after.indexes, [&index](const auto& other) { return other.id == index.id; });
        TableChange(frame_, metadata_, table_).Rebuild(after);
    } else {
        TableStorage(GetStore(), metadata_).DropIndex(table_, index);
    }
    metadata_.RemoveIndex(table_.object.id, index.id);
    metadata_.RemoveConstraint(index.constraintId);
    return true;
}

bool TableDropper::TryDropOther(const QString& name) {
    int64_t id = 0;
    for (const CheckInfo& check : table_.checks) {
        if (SameName(check.name, name)) id = check.id;
    }
    for (const ForeignKeyInfo& key : table_.foreignKeys) {
        if (SameName(key.name, name)) id = key.id;
    }
    for (const ColumnInfo& column : table_.columns) {
        if (column.defaultId != 0 && SameName(column.defaultName, name)) id = column.defaultId;
    }
    if (id != 0) metadata_.RemoveConstraint(id);
    return id != 0;
}

void TableDropper::DropColumn(const Item& item) {
    const QString clause = QStringLiteral("DROP COLUMN");
    if (item.ifExists && !table_.FindColumn(item.name)) return;
    const ColumnInfo column = FindColumn(item.name, clause, item.line);
    const std::vector<ColumnDependent> dependents = FindDependents(frame_, table_, column);
    if (!dependents.empty()) throw DependentsError(dependents, column, clause);
    const auto data = std::count_if(table_.columns.begin(), table_.columns.end(),
                                    [](const ColumnInfo& c) { return !c.IsComputed(); });
    if (data == 1 && !column.IsComputed()) {
        throw SqlError(4923, {column.name, TableName()}, item.line);
    }
    TableStorage(GetStore(), metadata_).DropColumn(table_, column);
    metadata_.RemoveColumn(table_.object.id, column.id);
    Reload();
}

}  // namespace quarv::localdb::engine
