// What the catalogue knows of schemas and of alias types.
#include "localdb/engine/Metadata.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

constexpr const char* TypeColumns =
    "SELECT t.user_type, t.schema_id, s.name, t.name, t.type, t.nullable, t.is_sysname"
    " FROM $q_types t JOIN $q_schemas s ON s.schema_id = t.schema_id";

AliasType TypeOf(const SqliteStatement& row) {
    AliasType type;
    type.userType = static_cast<int>(row.Integer(0));
    type.schemaId = static_cast<int>(row.Integer(1));
    type.schema = row.String(2);
    type.name = row.String(3);
    type.type = UnpackType(row.Integer(4));
    type.nullable = row.Integer(5) != 0;
    type.isSysname = row.Integer(6) != 0;
    return type;
}

std::optional<AliasType> ReadType(SqliteStatement& row) {
    std::optional<AliasType> type;
    if (row.Step()) type = TypeOf(row);
    row.Reset();
    return type;
}

// The only column of the only row; null where there is none.
QString ReadName(SqliteStatement& row) {
    const QString name = row.Step() ? row.String(0) : QString();
    row.Reset();
    return name;
}

}  // namespace

int Metadata::AddSchema(const QString& name) {
    if (FindSchema(name)) throw SqlError(2714, {name});
    const auto id = static_cast<int>(TakeNumber(
        "UPDATE $q_meta SET value = value + 1 WHERE key = 'next_schema' RETURNING value - 1"));
    Cached("INSERT INTO $q_schemas VALUES (?1, ?2)").Bind(1, int64_t{id}).Bind(2, name).Run();
    return id;
}

void Metadata::RemoveSchema(int schemaId) {
    Cached("DELETE FROM $q_schemas WHERE schema_id = ?1").Bind(1, int64_t{schemaId}).Run();
}

std::optional<AliasType> Metadata::FindType(const QString& schema, const QString& name) {
    const std::optional<int> schemaId = FindSchema(schema);
    if (!schemaId) return std::nullopt;
    static const std::string sql =
        std::string(TypeColumns) + " WHERE t.schema_id = ?1 AND t.name = ?2";
    SqliteStatement& row = Cached(sql.c_str());
    row.Bind(1, int64_t{*schemaId}).Bind(2, name);
    return ReadType(row);
}

std::optional<AliasType> Metadata::FindType(int userType) {
    static const std::string sql = std::string(TypeColumns) + " WHERE t.user_type = ?1";
    SqliteStatement& row = Cached(sql.c_str());
    row.Bind(1, int64_t{userType});
    return ReadType(row);
}

std::vector<AliasType> Metadata::AllTypes() {
    static const std::string sql = std::string(TypeColumns) + " ORDER BY t.name, s.name";
    SqliteStatement& row = Cached(sql.c_str());
    std::vector<AliasType> types;
    while (row.Step()) types.push_back(TypeOf(row));
    row.Reset();
    return types;
}

void Metadata::AddType(const AliasType& type) {
    const int64_t id = TakeNumber(
        "UPDATE $q_meta SET value = value + 1 WHERE key = 'next_type' RETURNING value - 1");
    SqliteStatement& row = Cached("INSERT INTO $q_types VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
    row.Bind(1, id).Bind(2, int64_t{type.schemaId}).Bind(3, type.name);
    row.Bind(4, PackType(type.type)).Bind(5, int64_t{type.nullable});
    row.Bind(6, int64_t{type.isSysname});
    row.Run();
}

void Metadata::RemoveType(int userType) {
    Cached("DELETE FROM $q_types WHERE user_type = ?1").Bind(1, int64_t{userType}).Run();
}

std::vector<int> Metadata::SchemasWith(const QString& type) {
    SqliteStatement& row = Cached(
        "SELECT s.schema_id FROM $q_schemas s WHERE EXISTS (SELECT 1 FROM $q_objects o"
        " WHERE o.type = ?1 AND o.schema_id = s.schema_id) ORDER BY s.name");
    row.Bind(1, type);
    std::vector<int> schemas;
    while (row.Step()) schemas.push_back(static_cast<int>(row.Integer(0)));
    row.Reset();
    return schemas;
}

QString Metadata::FirstInSchema(int schemaId) {
    SqliteStatement& row = Cached(
        "SELECT name FROM (SELECT name, object_id AS id FROM $q_objects WHERE schema_id = ?1"
        " UNION ALL SELECT name, user_type FROM $q_types WHERE schema_id = ?1)"
        " ORDER BY id LIMIT 1");
    row.Bind(1, int64_t{schemaId});
    return ReadName(row);
}

QString Metadata::FirstWithType(int userType) {
    SqliteStatement& row = Cached(
        "SELECT o.name FROM (SELECT object_id FROM $q_columns WHERE user_type = ?1"
        " UNION SELECT object_id FROM $q_parameters WHERE user_type = ?1) u"
        " JOIN $q_objects o ON o.object_id = u.object_id ORDER BY o.object_id LIMIT 1");
    row.Bind(1, int64_t{userType});
    return ReadName(row);
}

bool Metadata::IsChild(int64_t objectId) {
    SqliteStatement& row =
        Cached("SELECT 1 FROM $q_objects WHERE object_id = ?1 AND parent_id <> 0");
    row.Bind(1, objectId);
    const bool found = row.Step();
    row.Reset();
    return found;
}

QString Metadata::NameTakenBy(int64_t objectId, int schemaId) {
    SqliteStatement& row = Cached(
        "SELECT o.name FROM (SELECT name FROM $q_objects WHERE object_id = ?1 UNION ALL"
        " SELECT name FROM $q_objects WHERE parent_id = ?1 AND parent_id <> 0) o"
        " WHERE EXISTS (SELECT 1 FROM $q_objects x WHERE x.schema_id = ?2 AND x.name = o.name)"
        " LIMIT 1");
    row.Bind(1, objectId).Bind(2, int64_t{schemaId});
    return ReadName(row);
}

void Metadata::MoveObject(int64_t objectId, int schemaId) {
    for (const char* sql :
         {"UPDATE $q_objects SET schema_id = ?2 WHERE object_id = ?1",
          "UPDATE $q_objects SET schema_id = ?2 WHERE parent_id = ?1 AND parent_id <> 0"}) {
        Cached(sql).Bind(1, objectId).Bind(2, int64_t{schemaId}).Run();
    }
    Touch(objectId);
}

void Metadata::MoveType(int userType, int schemaId) {
    Cached("UPDATE $q_types SET schema_id = ?2 WHERE user_type = ?1")
        .Bind(1, int64_t{userType})
        .Bind(2, int64_t{schemaId})
        .Run();
}

}  // namespace quarv::localdb::engine
