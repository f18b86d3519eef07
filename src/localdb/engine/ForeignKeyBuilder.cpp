#include "localdb/engine/ForeignKeyBuilder.h"

#include <algorithm>
#include <map>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

using Action = ForeignKeyInfo::Action;

Action ActionOf(tsql::ReferenceAction action) {
    switch (action) {
        case tsql::ReferenceAction::Cascade:
            return Action::Cascade;
        case tsql::ReferenceAction::SetNull:
            return Action::SetNull;
        case tsql::ReferenceAction::SetDefault:
            return Action::SetDefault;
        default:
            return Action::NoAction;
    }
}

bool SameKind(TypeKind a, TypeKind b) {
    const auto plain = [](TypeKind kind) {
        return kind == TypeKind::Numeric ? TypeKind::Decimal : kind;
    };
    return plain(a) == plain(b);
}

// An index that keeps its columns unique in all rows, over exactly these.
bool IsKeyOver(const IndexInfo& index, const std::vector<ForeignKeyInfo::Column>& columns) {
    if (!index.unique || !index.filter.isEmpty() || index.keys.size() != columns.size()) {
        return false;
    }
    return std::all_of(columns.begin(), columns.end(), [&index](const auto& column) {
        return std::any_of(index.keys.begin(), index.keys.end(), [&column](const auto& key) {
            return key.columnId == column.referencedId;
        });
    });
}

}  // namespace

void ForeignKeyBuilder::Add(const tsql::ForeignKey& definition, const QString& name,
                            bool systemNamed) {
    key_.name = name;
    key_.systemNamed = systemNamed;
    key_.tableId = table_.object.id;
    key_.onDelete = ActionOf(definition.onDelete);
    key_.onUpdate = ActionOf(definition.onUpdate);
    const TableInfo referenced = FindReferenced(definition);
    key_.referencedTable = referenced.object.id;
    AddColumns(definition, referenced);
    CheckTypes(referenced);
    FindKey(definition, referenced);
    CheckActions();
    CheckPaths(true);
    CheckPaths(false);
    table_.foreignKeys.push_back(key_);
}

TableInfo ForeignKeyBuilder::FindReferenced(const tsql::ForeignKey& definition) {
    const tsql::ObjectName& name = definition.referenced;
    const bool elsewhere =
        !name.server.isEmpty() ||
        (!name.database.isEmpty() && !SameName(name.database, metadata_.Database().name));
    if (elsewhere) throw SqlError(1763, {key_.name});
    const std::optional<int> schema = metadata_.FindSchema(name.schema);
    if (schema == table_.object.schemaId && SameName(name.name, table_.object.name)) return table_;
    const std::optional<ObjectInfo> object = metadata_.Find(name.schema, name.name);
    if (!object) throw SqlError(1767, {key_.name, name.ToText()});
    if (object->type != u"U") throw SqlError(1768, {key_.name, name.ToText()});
    return metadata_.LoadTable(*object);
}

void ForeignKeyBuilder::AddColumns(const tsql::ForeignKey& definition,
                                   const TableInfo& referenced) {
    std::vector<int> targets;
    for (const QString& name : definition.referencedColumns) {
        const ColumnInfo* column = referenced.FindColumn(name);
        if (!column) {
            throw SqlError(1770, {key_.name, name, definition.referenced.ToText()});
        }
        targets.push_back(column->id);
    }
    const bool implicit = targets.empty();
    if (implicit) {
        const auto primary = std::find_if(referenced.indexes.begin(), referenced.indexes.end(),
                                          [](const IndexInfo& index) { return index.primary; });
        if (primary == referenced.indexes.end()) {
            throw SqlError(1773, {key_.name, definition.referenced.ToText()});
        }
        for (const IndexInfo::Key& key : primary->keys) targets.push_back(key.columnId);
    }
    if (targets.size() != definition.columns.size()) {
        if (!implicit) throw SqlError(8139, {table_.object.name});
        throw SqlError(1774, {key_.name, definition.referenced.ToText()});
    }
    for (size_t i = 0; i < targets.size(); ++i) {
        const ColumnInfo* column = table_.FindColumn(definition.columns[i]);
        if (!column) {
            throw SqlError(1769, {key_.name, definition.columns[i], table_.object.name});
        }
        if (column->IsComputed() && !column->stored) {
            throw SqlError(1764, {column->name, key_.name});
        }
        key_.columns.push_back({column->id, targets[i]});
    }
}

void ForeignKeyBuilder::CheckTypes(const TableInfo& referenced) const {
    for (const ForeignKeyInfo::Column& pair : key_.columns) {
        const ColumnInfo& own = *table_.FindColumn(pair.columnId);
        const ColumnInfo& other = *referenced.FindColumn(pair.referencedId);
        const QStringList inserts = {referenced.object.name + u'.' + other.name,
                                     table_.object.name + u'.' + own.name, key_.name};
        if (!SameKind(own.type.kind, other.type.kind)) throw SqlError(1778, inserts);
        const bool same = own.type.length == other.type.length &&
                          own.type.precision == other.type.precision &&
                          own.type.scale == other.type.scale;
        if (!same) throw SqlError(1753, inserts);
    }
}

void ForeignKeyBuilder::FindKey(const tsql::ForeignKey& definition, const TableInfo& referenced) {
    const IndexInfo* found = nullptr;
    for (const IndexInfo& index : referenced.indexes) {
        if (!IsKeyOver(index, key_.columns)) continue;
        if (!found || index.primary) found = &index;
    }
    if (!found) {
        throw SqlError(1776, {definition.referenced.ToText(), key_.name});
    }
    key_.keyIndex = found->id;
}

// What the action would put into the columns must be possible there.
void ForeignKeyBuilder::CheckActions() const {
    const auto uses = [this](Action action) {
        return key_.onDelete == action || key_.onUpdate == action;
    };
    for (const ForeignKeyInfo::Column& pair : key_.columns) {
        const ColumnInfo& column = *table_.FindColumn(pair.columnId);
        if (column.IsComputed() && (uses(Action::SetNull) || uses(Action::SetDefault) ||
                                    key_.onUpdate != Action::NoAction)) {
            throw SqlError(1765, {key_.name, column.name});
        }
        if (column.nullable) continue;
        if (uses(Action::SetNull)) throw SqlError(1761, {key_.name});
        if (uses(Action::SetDefault) && column.defaultText.isEmpty()) {
            throw SqlError(1762, {key_.name});
        }
    }
}

// No table may be reached twice by the actions of what happens in another, or by its own.
void ForeignKeyBuilder::CheckPaths(bool deletes) const {
    const auto acts = [deletes](const ForeignKeyInfo& key) {
        return (deletes ? key.onDelete : key.onUpdate) != Action::NoAction;
    };
    if (!acts(key_)) return;
    std::multimap<int64_t, int64_t> children;
    for (const ForeignKeyInfo& key : metadata_.AllForeignKeys()) {
        if (acts(key)) children.emplace(key.referencedTable, key.tableId);
    }
    for (const ForeignKeyInfo& key : table_.foreignKeys) {
        if (key.id == 0 && acts(key)) children.emplace(key.referencedTable, key.tableId);
    }
    children.emplace(key_.referencedTable, key_.tableId);
    for (auto start = children.begin(); start != children.end();
         start = children.upper_bound(start->first)) {
        std::vector<int64_t> open = {start->first}, seen = {start->first};
        while (!open.empty()) {
            const auto range = children.equal_range(open.back());
            open.pop_back();
            for (auto child = range.first; child != range.second; ++child) {
                if (std::find(seen.begin(), seen.end(), child->second) != seen.end()) {
                    throw SqlError(1785, {key_.name, table_.object.name});
                }
                seen.push_back(child->second);
                open.push_back(child->second);
            }
        }
    }
}

}  // namespace quarv::localdb::engine
