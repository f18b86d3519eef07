#include "localdb/engine/Metadata.h"

#include <sqlite3.h>

#include <utility>

#include "localdb/engine/Moment.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TemporaryTables.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

// "$" stands for the database's prefix.
constexpr const char* ObjectColumns =
    "SELECT o.object_id, o.schema_id, s.name, o.type, o.name, o.created, o.definition,"
    " o.system_named, o.max_column, o.schema_bound"
    " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id";

const std::string FindByName =
    std::string(ObjectColumns) + " WHERE o.schema_id = ?1 AND o.name = ?2";
const std::string FindById = std::string(ObjectColumns) + " WHERE o.object_id = ?1";

int64_t Now() {
    return Moment::Now().Store(TypeKind::DateTime).value_or(0);
}

}  // namespace

Metadata::Metadata(Store& store, const DatabaseEntry& database)
    : store_(store), database_(database), prefix_(store.Attach(database) + ".") {}

SqliteStatement& Metadata::Counter(const char* sql) {
    std::string text;
    for (const char* c = sql; *c; ++c) {
        if (*c == '$') {
            text += prefix_;
        } else {
            text += *c;
        }
    }
    return store_.Cached(text);
}

SqliteStatement& Metadata::Cached(const char* sql) {
    SqliteStatement& statement = Counter(sql);
    if (sqlite3_stmt_readonly(statement.Handle()) == 0) {
        Counter(
            "INSERT INTO $q_meta VALUES ('catalogue', ?1)"
            " ON CONFLICT (key) DO UPDATE SET value = ?1")
            .Bind(1, CatalogueCache::NewVersion())
            .Run();
        store_.Catalogue().Doubt(database_.id);
    }
    return statement;
}

// The session's own tempdb comes and goes by rollbacks; nothing of it is kept.
bool Metadata::KnowsCatalogue() {
    CatalogueCache& cache = store_.Catalogue();
    if (database_.id == DatabaseList::TemporaryId || !cache.InStatement()) return false;
    if (!cache.IsChecked(database_.id)) {
        SqliteStatement& row =
            store_.Cached("SELECT value FROM " + prefix_ + "q_meta WHERE key = 'catalogue'");
        const int64_t version = row.Step() ? row.Integer(0) : 0;
        row.Reset();
        cache.Check(database_.id, version);
    }
    return true;
}

ObjectInfo Metadata::ReadObject(const SqliteStatement& row) {
    ObjectInfo object;
    object.id = row.Integer(0);
    object.schemaId = static_cast<int>(row.Integer(1));
    object.schema = row.String(2);
    object.type = row.String(3);
    object.name = row.String(4);
    object.created = row.Integer(5);
    object.definition = row.String(6);
    object.systemNamed = row.Integer(7) != 0;
    object.maxColumn = static_cast<int>(row.Integer(8));
    object.schemaBound = row.Integer(9) != 0;
    return object;
}

std::optional<int> Metadata::FindSchema(const QString& schema) {
    if (schema.isEmpty()) return DboSchema;
    SqliteStatement& row = Cached("SELECT schema_id FROM $q_schemas WHERE name = ?1");
    row.Bind(1, schema);
    const std::optional<int> id =
        row.Step() ? std::optional(static_cast<int>(row.Integer(0))) : std::nullopt;
    row.Reset();
    return id;
}

// Of several tables of that name, each of another call level, the innermost is meant.
std::optional<ObjectInfo> Metadata::FindTemporary(const QString& name) {
    static const std::string sql = std::string(ObjectColumns) +
                                   " WHERE substr(o.name, 1, ?2) = ?1 COLLATE tsql AND o.type = 'U'"
                                   " ORDER BY o.object_id DESC LIMIT 1";
    const QString shared = TemporaryTables::SharedName(name);
    SqliteStatement& row = Cached(sql.c_str());
    row.Bind(1, shared).Bind(2, int64_t{shared.toUcs4().size()});
    const std::optional<ObjectInfo> object =
        row.Step() ? std::optional(ReadObject(row)) : std::nullopt;
    row.Reset();
    return object;
}

QString Metadata::SchemaName(int64_t schemaId) {
    SqliteStatement& row = Cached("SELECT name FROM $q_schemas WHERE schema_id = ?1");
    row.Bind(1, schemaId);
    const QString name = row.Step() ? row.String(0) : QString();
    row.Reset();
    return name;
}

bool Metadata::HasChild(int64_t parentId, const QString& type) {
    SqliteStatement& row =
        Cached("SELECT 1 FROM $q_objects WHERE parent_id = ?1 AND parent_id <> 0 AND type = ?2");
    row.Bind(1, parentId).Bind(2, type);
    const bool found = row.Step();
    row.Reset();
    return found;
}

std::optional<ObjectInfo> Metadata::Find(const QString& schema, const QString& name) {
    const bool temporary = database_.id == DatabaseList::TemporaryId && name.startsWith(u'#');
    if (temporary && name == TemporaryTables::WrittenName(name)) return FindTemporary(name);
    const bool keeps = KnowsCatalogue();
    const QString key = keeps ? schema + QChar(u'\0') + name : QString();
    if (keeps) {
        const CatalogueCache::Object known = store_.Catalogue().FindObject(database_.id, key);
        if (known) return *known;
    }
    const std::optional<int> schemaId = FindSchema(schema);
    if (!schemaId) return std::nullopt;
    SqliteStatement& row = Cached(FindByName.c_str());
    row.Bind(1, int64_t{*schemaId}).Bind(2, name);
    const std::optional<ObjectInfo> object =
        row.Step() ? std::optional(ReadObject(row)) : std::nullopt;
    row.Reset();
    if (keeps && object) {
        store_.Catalogue().Keep(database_.id, key, std::make_shared<const ObjectInfo>(*object));
    }
    return object;
}

std::optional<ObjectInfo> Metadata::Find(int64_t objectId) {
    SqliteStatement& row = Cached(FindById.c_str());
    row.Bind(1, objectId);
    const std::optional<ObjectInfo> object =
        row.Step() ? std::optional(ReadObject(row)) : std::nullopt;
    row.Reset();
    return object;
}

TableInfo Metadata::LoadTable(const ObjectInfo& object) {
    if (!KnowsCatalogue()) return ReadTable(object);
    CatalogueCache& cache = store_.Catalogue();
    if (const CatalogueCache::Table known = cache.FindTable(database_.id, object.id)) {
        TableInfo table = *known;
        // Its last value changes with the rows, not with the catalogue.
        if (table.identity) table.identity = LoadIdentity(object.id);
        return table;
    }
    TableInfo table = ReadTable(object);
    ReadConstraints(table);
    cache.Keep(database_.id, std::make_shared<const TableInfo>(table));
    return table;
}

TableInfo Metadata::ReadTable(const ObjectInfo& object) {
    TableInfo table;
    table.object = object;
    table.columns = LoadColumns(object.id);
    table.indexes = LoadIndexes(object.id);
    table.identity = LoadIdentity(object.id);
    for (ColumnInfo& column : table.columns) {
        column.identity = table.identity && table.identity->columnId == column.id;
    }
    return table;
}

std::vector<ColumnInfo> Metadata::LoadColumns(int64_t objectId) {
    std::vector<ColumnInfo> columns;
    SqliteStatement& row = Cached(
        "SELECT c.column_id, c.name, c.type, c.nullable, c.is_sysname, c.default_id, d.definition,"
        " d.name, c.user_type, t.name, c.computed, c.is_persisted, c.is_stored, c.is_rowguid"
        " FROM $q_columns c LEFT JOIN $q_objects d ON d.object_id = c.default_id"
        " LEFT JOIN $q_types t ON t.user_type = c.user_type"
        " WHERE c.object_id = ?1 ORDER BY c.column_id");
    row.Bind(1, objectId);
    while (row.Step()) {
        ColumnInfo column;
        column.id = static_cast<int>(row.Integer(0));
        column.name = row.String(1);
        column.type = UnpackType(row.Integer(2));
        column.nullable = row.Integer(3) != 0;
        column.isSysname = row.Integer(4) != 0;
        column.defaultId = row.Integer(5);
        column.defaultText = row.String(6);
        column.defaultName = row.String(7);
        column.userType = static_cast<int>(row.Integer(8));
        column.userTypeName = row.String(9);
        column.computedText = row.String(10);
        column.persisted = row.Integer(11) != 0;
        column.stored = row.Integer(12) != 0;
        column.rowGuid = row.Integer(13) != 0;
        columns.push_back(std::move(column));
    }
    row.Reset();
    return columns;
}

std::vector<IndexInfo> Metadata::LoadIndexes(int64_t objectId) {
    std::vector<IndexInfo> indexes;
    SqliteStatement& row = Cached(
        "SELECT i.index_id, i.name, i.is_unique, i.is_clustered, i.constraint_id, o.type,"
        " k.column_id, k.descending, i.filter, i.is_storage_key, k.included FROM $q_indexes i"
        " JOIN $q_index_columns k ON k.object_id = i.object_id AND k.index_id = i.index_id"
        " LEFT JOIN $q_objects o ON o.object_id = i.constraint_id"
        " WHERE i.object_id = ?1 ORDER BY i.index_id, k.key_no");
    row.Bind(1, objectId);
    while (row.Step()) {
        const int id = static_cast<int>(row.Integer(0));
        if (indexes.empty() || indexes.back().id != id) {
            IndexInfo index;
            index.id = id;
            index.name = row.String(1);
            index.unique = row.Integer(2) != 0;
            index.clustered = row.Integer(3) != 0;
            index.constraintId = row.Integer(4);
            index.primary = row.Text(5) == "PK";
            index.filter = row.String(8);
            index.storageKey = row.Integer(9) != 0;
            indexes.push_back(std::move(index));
        }
        const int column = static_cast<int>(row.Integer(6));
        if (row.Integer(10) != 0) {
            indexes.back().included.push_back(column);
        } else {
            indexes.back().keys.push_back({column, row.Integer(7) != 0});
        }
    }
    row.Reset();
    return indexes;
}

std::optional<IdentityInfo> Metadata::LoadIdentity(int64_t objectId) {
    SqliteStatement& row =
        Cached("SELECT column_id, seed, increment, last FROM $q_identity WHERE object_id = ?1");
    row.Bind(1, objectId);
    std::optional<IdentityInfo> identity;
    if (row.Step()) {
        identity.emplace();
        identity->columnId = static_cast<int>(row.Integer(0));
        identity->seed = row.Integer(1);
        identity->increment = row.Integer(2);
        if (!row.IsNull(3)) identity->last = row.Integer(3);
    }
    row.Reset();
    return identity;
}

std::vector<ParameterInfo> Metadata::LoadParameters(int64_t objectId) {
    std::vector<ParameterInfo> parameters;
    SqliteStatement& row = Cached(
        "SELECT name, type, is_output, default_text, user_type FROM $q_parameters"
        " WHERE object_id = ?1 ORDER BY parameter_id");
    row.Bind(1, objectId);
    while (row.Step()) {
        ParameterInfo parameter;
        parameter.name = row.String(0);
        parameter.type = UnpackType(row.Integer(1));
        parameter.output = row.Integer(2) != 0;
        if (!row.IsNull(3)) parameter.defaultText = row.String(3);
        parameter.userType = static_cast<int>(row.Integer(4));
        parameters.push_back(std::move(parameter));
    }
    row.Reset();
    return parameters;
}

int64_t Metadata::NextObjectId() {
    return TakeNumber(
        "UPDATE $q_meta SET value = value + 1 WHERE key = 'next_object' RETURNING value - 1");
}

int64_t Metadata::TakeNumber(const char* sql) {
    SqliteStatement& row = Counter(sql);
    if (!row.Step()) throw SqlError(945, {database_.name});
    const int64_t id = row.Integer(0);
    row.Reset();
    return id;
}

int64_t Metadata::NextRowVersion() {
    // The first one is 2001, as the server's own is.
    SqliteStatement& row = Counter(
        "INSERT INTO $q_meta VALUES ('row_version', 2001)"
        " ON CONFLICT (key) DO UPDATE SET value = value + 1 RETURNING value");
    if (!row.Step()) throw SqlError(945, {database_.name});
    const int64_t version = row.Integer(0);
    row.Reset();
    return version;
}

int64_t Metadata::LastRowVersion() {
    SqliteStatement& row = Cached("SELECT value FROM $q_meta WHERE key = 'row_version'");
    const int64_t version = row.Step() ? row.Integer(0) : 2000;
    row.Reset();
    return version;
}

int64_t Metadata::AddObject(ObjectInfo object, int64_t parentId) {
    if (Find(object.schema, object.name)) throw SqlError(2714, {object.name});
    if (object.id == 0) object.id = NextObjectId();
    SqliteStatement& row = Cached(
        "INSERT INTO $q_objects(object_id, schema_id, parent_id, type, name, created, modified,"
        " definition, system_named, schema_bound) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?6, ?7, ?8, ?9)");
    row.Bind(1, object.id).Bind(2, int64_t{object.schemaId}).Bind(3, parentId);
    row.Bind(4, object.type).Bind(5, object.name).Bind(6, Now());
    if (!object.definition.isNull()) row.Bind(7, object.definition);
    row.Bind(8, int64_t{object.systemNamed}).Bind(9, int64_t{object.schemaBound});
    row.Run();
    return object.id;
}

void Metadata::AddColumn(int64_t objectId, const ColumnInfo& column) {
    SqliteStatement& row = Cached(
        "INSERT INTO $q_columns(object_id, column_id, name, type, nullable, default_id,"
        " is_sysname, user_type, computed, is_persisted, is_stored, is_rowguid)"
        " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)");
    row.Bind(1, objectId).Bind(2, int64_t{column.id}).Bind(3, column.name);
    row.Bind(4, PackType(column.type)).Bind(5, int64_t{column.nullable});
    row.Bind(6, column.defaultId).Bind(7, int64_t{column.isSysname});
    row.Bind(8, int64_t{column.userType});
    if (column.IsComputed()) row.Bind(9, column.computedText);
    row.Bind(10, int64_t{column.persisted}).Bind(11, int64_t{column.stored});
    row.Bind(12, int64_t{column.rowGuid});
    row.Run();
    Cached("UPDATE $q_objects SET max_column = max(max_column, ?2) WHERE object_id = ?1")
        .Bind(1, objectId)
        .Bind(2, int64_t{column.id})
        .Run();
}

void Metadata::AddIndex(int64_t objectId, const IndexInfo& index) {
    SqliteStatement& row = Cached(
        "INSERT INTO $q_indexes(object_id, index_id, name, is_unique, is_clustered,"
        " constraint_id, filter, is_storage_key) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)");
    row.Bind(1, objectId).Bind(2, int64_t{index.id}).Bind(3, index.name);
    row.Bind(4, int64_t{index.unique}).Bind(5, int64_t{index.clustered});
    row.Bind(6, index.constraintId).Bind(8, int64_t{index.storageKey});
    if (!index.filter.isEmpty()) row.Bind(7, index.filter);
    row.Run();
    int64_t number = 0;
    const auto add = [&](int columnId, bool descending, bool included) {
        SqliteStatement& part = Cached(
            "INSERT INTO $q_index_columns(object_id, index_id, key_no, column_id, descending,"
            " included) VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
        part.Bind(1, objectId).Bind(2, int64_t{index.id}).Bind(3, ++number);
        part.Bind(4, int64_t{columnId}).Bind(5, int64_t{descending}).Bind(6, int64_t{included});
        part.Run();
    };
    for (const IndexInfo::Key& key : index.keys) add(key.columnId, key.descending, false);
    for (const int column : index.included) add(column, false, true);
}

void Metadata::AddIdentity(int64_t objectId, const IdentityInfo& identity) {
    SqliteStatement& row = Cached("INSERT INTO $q_identity VALUES (?1, ?2, ?3, ?4, NULL)");
    row.Bind(1, objectId).Bind(2, int64_t{identity.columnId});
    row.Bind(3, identity.seed).Bind(4, identity.increment);
    row.Run();
}

void Metadata::AddParameter(int64_t objectId, int number, const ParameterInfo& parameter) {
    SqliteStatement& row = Cached(
        "INSERT INTO $q_parameters(object_id, parameter_id, name, type, is_output, default_text,"
        " user_type) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)");
    row.Bind(1, objectId).Bind(2, int64_t{number}).Bind(3, parameter.name);
    row.Bind(4, PackType(parameter.type)).Bind(5, int64_t{parameter.output});
    if (parameter.defaultText) row.Bind(6, *parameter.defaultText);
    row.Bind(7, int64_t{parameter.userType});
    row.Run();
}

void Metadata::SetLastIdentity(int64_t objectId, int64_t last) {
    Counter("UPDATE $q_identity SET last = ?2 WHERE object_id = ?1")
        .Bind(1, objectId)
        .Bind(2, last)
        .Run();
}

void Metadata::ResetIdentity(int64_t objectId) {
    Counter("UPDATE $q_identity SET last = NULL WHERE object_id = ?1").Bind(1, objectId).Run();
}

void Metadata::RemoveIndex(int64_t objectId, int indexId) {
    for (const char* sql : {"DELETE FROM $q_index_columns WHERE object_id = ?1 AND index_id = ?2",
                            "DELETE FROM $q_indexes WHERE object_id = ?1 AND index_id = ?2"}) {
        Cached(sql).Bind(1, objectId).Bind(2, int64_t{indexId}).Run();
    }
}

void Metadata::RemoveObject(int64_t objectId) {
    for (const char* sql : {"DELETE FROM $q_index_columns WHERE object_id = ?1",
                            "DELETE FROM $q_indexes WHERE object_id = ?1",
                            "DELETE FROM $q_identity WHERE object_id = ?1",
                            "DELETE FROM $q_columns WHERE object_id = ?1",
                            "DELETE FROM $q_parameters WHERE object_id = ?1",
                            "DELETE FROM $q_checks WHERE table_id = ?1",
                            "DELETE FROM $q_foreign_key_columns WHERE object_id IN"
                            " (SELECT object_id FROM $q_foreign_keys WHERE table_id = ?1)",
                            "DELETE FROM $q_foreign_keys WHERE table_id = ?1",
                            "DELETE FROM $q_objects WHERE parent_id = ?1 AND parent_id <> 0",
                            "DELETE FROM $q_objects WHERE object_id = ?1"}) {
        Cached(sql).Bind(1, objectId).Run();
    }
}

}  // namespace quarv::localdb::engine
