// What ALTER, DROP and the constraints read and change of the catalogue.
#include "localdb/engine/Metadata.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

const std::string ForeignKeys =
    "SELECT k.object_id, o.name, k.table_id, k.referenced_id, k.key_index_id, k.on_delete,"
    " k.on_update, k.is_disabled, k.is_not_trusted, c.column_id, c.referenced_column_id"
    " FROM $q_foreign_keys k JOIN $q_objects o ON o.object_id = k.object_id"
    " JOIN $q_foreign_key_columns c ON c.object_id = k.object_id";
const std::string InOrder = " ORDER BY k.object_id, c.key_no";
const std::string OwnForeignKeys = ForeignKeys + " WHERE k.table_id = ?1" + InOrder;
const std::string EveryForeignKey = ForeignKeys + " WHERE k.object_id > ?1" + InOrder;
const std::string References = ForeignKeys + " WHERE k.referenced_id = ?1" + InOrder;

}  // namespace

void Metadata::LoadConstraints(TableInfo& table) {
    const CatalogueCache::Table known =
        KnowsCatalogue() ? store_.Catalogue().FindTable(database_.id, table.object.id) : nullptr;
    if (!known) {
        ReadConstraints(table);
        return;
    }
    table.checks = known->checks;
    table.foreignKeys = known->foreignKeys;
    table.references = known->references;
}

void Metadata::ReadConstraints(TableInfo& table) {
    // A table variable's checks stand in no catalogue and have no number.
    std::erase_if(table.checks, [](const CheckInfo& check) { return check.id != 0; });
    SqliteStatement& row = Cached(
        "SELECT k.object_id, o.name, o.definition, k.column_id, k.is_disabled, k.is_not_trusted"
        " FROM $q_checks k JOIN $q_objects o ON o.object_id = k.object_id"
        " WHERE k.table_id = ?1 ORDER BY k.object_id");
    row.Bind(1, table.object.id);
    while (row.Step()) {
        CheckInfo check;
        check.id = row.Integer(0);
        check.name = row.String(1);
        check.text = row.String(2);
        check.columnId = static_cast<int>(row.Integer(3));
        check.disabled = row.Integer(4) != 0;
        check.trusted = row.Integer(5) == 0;
        table.checks.push_back(std::move(check));
    }
    row.Reset();
    table.foreignKeys = LoadForeignKeys(OwnForeignKeys.c_str(), table.object.id);
    table.references = LoadForeignKeys(References.c_str(), table.object.id);
}

std::vector<ForeignKeyInfo> Metadata::LoadForeignKeys(const char* sql, int64_t tableId) {
    std::vector<ForeignKeyInfo> keys;
    SqliteStatement& row = Cached(sql);
    row.Bind(1, tableId);
    while (row.Step()) {
        if (keys.empty() || keys.back().id != row.Integer(0)) {
            ForeignKeyInfo key;
            key.id = row.Integer(0);
            key.name = row.String(1);
            key.tableId = row.Integer(2);
            key.referencedTable = row.Integer(3);
            key.keyIndex = static_cast<int>(row.Integer(4));
            key.onDelete = static_cast<ForeignKeyInfo::Action>(row.Integer(5) & 3);
            key.onUpdate = static_cast<ForeignKeyInfo::Action>(row.Integer(6) & 3);
            key.disabled = row.Integer(7) != 0;
            key.trusted = row.Integer(8) == 0;
            keys.push_back(std::move(key));
        }
        keys.back().columns.push_back(
            {static_cast<int>(row.Integer(9)), static_cast<int>(row.Integer(10))});
    }
    row.Reset();
    return keys;
}

std::vector<ForeignKeyInfo> Metadata::AllForeignKeys() {
    return LoadForeignKeys(EveryForeignKey.c_str(), 0);
}

void Metadata::AddCheck(int64_t tableId, const CheckInfo& check) {
    Cached("INSERT INTO $q_checks VALUES (?1, ?2, ?3, ?4, ?5)")
        .Bind(1, check.id)
        .Bind(2, tableId)
        .Bind(3, int64_t{check.columnId})
        .Bind(4, int64_t{check.disabled})
        .Bind(5, int64_t{!check.trusted})
        .Run();
}

void Metadata::AddForeignKey(const ForeignKeyInfo& key) {
    SqliteStatement& row =
        Cached("INSERT INTO $q_foreign_keys VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)");
    row.Bind(1, key.id).Bind(2, key.tableId).Bind(3, key.referencedTable);
    row.Bind(4, int64_t{key.keyIndex});
    row.Bind(5, static_cast<int64_t>(key.onDelete)).Bind(6, static_cast<int64_t>(key.onUpdate));
    row.Bind(7, int64_t{key.disabled}).Bind(8, int64_t{!key.trusted});
    row.Run();
    int64_t number = 0;
    for (const ForeignKeyInfo::Column& column : key.columns) {
        Cached("INSERT INTO $q_foreign_key_columns VALUES (?1, ?2, ?3, ?4)")
            .Bind(1, key.id)
            .Bind(2, ++number)
            .Bind(3, int64_t{column.columnId})
            .Bind(4, int64_t{column.referencedId})
            .Run();
    }
}

void Metadata::SetConstraintState(int64_t objectId, bool disabled, bool trusted) {
    for (const char* sql :
         {"UPDATE $q_checks SET is_disabled = ?2, is_not_trusted = ?3 WHERE object_id = ?1",
          "UPDATE $q_foreign_keys SET is_disabled = ?2, is_not_trusted = ?3"
          " WHERE object_id = ?1"}) {
        Cached(sql).Bind(1, objectId).Bind(2, int64_t{disabled}).Bind(3, int64_t{!trusted}).Run();
    }
}

void Metadata::RemoveConstraint(int64_t objectId) {
    for (const char* sql : {"DELETE FROM $q_checks WHERE object_id = ?1",
                            "DELETE FROM $q_foreign_key_columns WHERE object_id = ?1",
                            "DELETE FROM $q_foreign_keys WHERE object_id = ?1",
                            "UPDATE $q_columns SET default_id = 0 WHERE default_id = ?1",
                            "DELETE FROM $q_objects WHERE object_id = ?1"}) {
        Cached(sql).Bind(1, objectId).Run();
    }
}

void Metadata::UpdateColumn(int64_t objectId, const ColumnInfo& column) {
    SqliteStatement& row = Cached(
        "UPDATE $q_columns SET name = ?3, type = ?4, nullable = ?5, default_id = ?6,"
        " is_sysname = ?7, user_type = ?8, is_persisted = ?9, is_stored = ?10, is_rowguid = ?11"
        " WHERE object_id = ?1 AND column_id = ?2");
    row.Bind(1, objectId).Bind(2, int64_t{column.id}).Bind(3, column.name);
    row.Bind(4, PackType(column.type)).Bind(5, int64_t{column.nullable});
    row.Bind(6, column.defaultId).Bind(7, int64_t{column.isSysname});
    row.Bind(8, int64_t{column.userType}).Bind(9, int64_t{column.persisted});
    row.Bind(10, int64_t{column.stored}).Bind(11, int64_t{column.rowGuid});
    row.Run();
}

void Metadata::RemoveColumn(int64_t objectId, int columnId) {
    for (const char* sql : {"DELETE FROM $q_identity WHERE object_id = ?1 AND column_id = ?2",
                            "DELETE FROM $q_columns WHERE object_id = ?1 AND column_id = ?2"}) {
        Cached(sql).Bind(1, objectId).Bind(2, int64_t{columnId}).Run();
    }
}

void Metadata::SetStorageKey(int64_t objectId, int indexId, bool is) {
    Cached("UPDATE $q_indexes SET is_storage_key = ?3 WHERE object_id = ?1 AND index_id = ?2")
        .Bind(1, objectId)
        .Bind(2, int64_t{indexId})
        .Bind(3, int64_t{is})
        .Run();
}

void Metadata::RenameObject(int64_t objectId, const QString& name) {
    Cached("UPDATE $q_objects SET name = ?2, system_named = 0 WHERE object_id = ?1")
        .Bind(1, objectId)
        .Bind(2, name)
        .Run();
    Cached("UPDATE $q_indexes SET name = ?2 WHERE constraint_id = ?1")
        .Bind(1, objectId)
        .Bind(2, name)
        .Run();
}

void Metadata::RenameIndex(int64_t objectId, int indexId, const QString& name) {
    Cached("UPDATE $q_indexes SET name = ?3 WHERE object_id = ?1 AND index_id = ?2")
        .Bind(1, objectId)
        .Bind(2, int64_t{indexId})
        .Bind(3, name)
        .Run();
}

void Metadata::Redefine(int64_t objectId, const QString& source, bool schemaBound) {
    for (const char* sql : {"DELETE FROM $q_columns WHERE object_id = ?1",
                            "DELETE FROM $q_parameters WHERE object_id = ?1"}) {
        Cached(sql).Bind(1, objectId).Run();
    }
    Cached("UPDATE $q_objects SET definition = ?2, schema_bound = ?3 WHERE object_id = ?1")
        .Bind(1, objectId)
        .Bind(2, source)
        .Bind(3, int64_t{schemaBound})
        .Run();
    Touch(objectId);
}

void Metadata::Touch(int64_t objectId) {
    Cached("UPDATE $q_objects SET modified = ?2 WHERE object_id = ?1")
        .Bind(1, objectId)
        .Bind(2, Moment::Now().Store(TypeKind::DateTime).value_or(0))
        .Run();
}

}  // namespace quarv::localdb::engine
