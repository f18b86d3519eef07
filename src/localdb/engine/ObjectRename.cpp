#include "localdb/engine/ObjectRename.h"

#include <algorithm>

#include "localdb/engine/ColumnDependents.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

using Kind = ColumnDependent::Kind;

// Its text names the column.
bool IsWritten(const ColumnDependent& dependent, const TableInfo& table) {
    if (dependent.kind == Kind::Check || dependent.kind == Kind::Computed) return true;
    return std::any_of(table.indexes.begin(), table.indexes.end(), [&](const IndexInfo& index) {
        return SameName(index.name, dependent.name) && !index.filter.isEmpty();
    });
}

}  // namespace

void ObjectRename::Run(const QString& name, const QString& newName, const QString& type) {
    name_ = name;
    newName_ = newName;
    const QString kind = type.toUpper();
    for (const QStringView word : {u"DATABASE", u"STATISTICS", u"USERDATATYPE"}) {
        if (kind == word) throw SqlError(40517, {QStringLiteral("sp_rename ... ") + kind});
    }
    const bool known = kind.isEmpty() || kind == u"OBJECT" || kind == u"COLUMN" || kind == u"INDEX";
    if (!known) throw SqlError(15249, {type, QString::number(type.size())});
    Transactions::Writing writing(frame_.Session().transactions, metadata_.Prefix());
    const std::optional<tsql::ObjectName> parts = tsql::ParseLooseName(name);
    if (parts) parts_ = *parts;
    const bool done = parts && (((kind.isEmpty() || kind == u"OBJECT") && TryObject()) ||
                                ((kind.isEmpty() || kind == u"COLUMN") && TryColumn()) ||
                                ((kind.isEmpty() || kind == u"INDEX") && TryIndex()));
    if (!done && (kind.isEmpty() || kind == u"OBJECT")) {
        throw SqlError(15225, {name, metadata_.Database().name,
                               type.isEmpty() ? QStringLiteral("(null)") : type});
    }
    if (!done) throw SqlError(15248, {type});
    writing.Commit();
}

bool ObjectRename::TryObject() {
    if (!parts_.server.isEmpty()) return false;
    const QString& database = parts_.database;
    const std::optional<ObjectInfo> object = metadata_.Find(parts_.schema, parts_.name);
    if (!database.isEmpty() && !SameName(database, metadata_.Database().name)) {
        // The first of three parts may be a schema, before a table and its column.
        if (metadata_.FindSchema(database)) return false;
        throw SqlError(15250);
    }
    if (!object) return false;
    const std::optional<ObjectInfo> other = metadata_.Find(object->schema, newName_);
    if (other && other->id != object->id) {
        throw SqlError(15335, {newName_, QStringLiteral("object")});
    }
    metadata_.RenameObject(object->id, newName_);
    metadata_.Touch(object->id);
    return true;
}

std::optional<TableInfo> ObjectRename::FindTable() {
    const bool elsewhere =
        !parts_.server.isEmpty() && !SameName(parts_.server, metadata_.Database().name);
    if (elsewhere) throw SqlError(15250);
    if (parts_.schema.isEmpty()) return std::nullopt;
    const std::optional<ObjectInfo> object = metadata_.Find(parts_.database, parts_.schema);
    if (!object || object->type != u"U") return std::nullopt;
    TableInfo table = metadata_.LoadTable(*object);
    metadata_.LoadConstraints(table);
    return table;
}

bool ObjectRename::TryColumn() {
    const std::optional<TableInfo> table = FindTable();
    const ColumnInfo* column = table ? table->FindColumn(parts_.name) : nullptr;
    if (!column) return false;
    RenameColumn(*table, *column);
    return true;
}

void ObjectRename::RenameColumn(const TableInfo& table, const ColumnInfo& column) {
    const ColumnInfo* other = table.FindColumn(newName_);
    if (other && other->id != column.id) {
        throw SqlError(15335, {newName_, QStringLiteral("COLUMN")});
    }
    for (const ColumnDependent& dependent : FindDependents(frame_, table, column)) {
        if (IsWritten(dependent, table)) throw SqlError(15336, {name_});
    }
    ColumnInfo renamed = column;
    renamed.name = newName_;
    metadata_.UpdateColumn(table.object.id, renamed);
    metadata_.Touch(table.object.id);
}

bool ObjectRename::TryIndex() {
    const std::optional<TableInfo> table = FindTable();
    if (!table) return false;
    const IndexInfo* index = table->FindIndex(parts_.name);
    if (!index) return false;
    const IndexInfo* other = table->FindIndex(newName_);
    if (other && other != index) {
        throw SqlError(15335, {newName_, QStringLiteral("INDEX")});
    }
    // The index behind a constraint is that constraint.
    if (index->constraintId != 0) {
        metadata_.RenameObject(index->constraintId, newName_);
    } else {
        metadata_.RenameIndex(table->object.id, index->id, newName_);
    }
    metadata_.Touch(table->object.id);
    return true;
}

}  // namespace quarv::localdb::engine
