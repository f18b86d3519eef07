#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/NameFilter.h"
#include "localdb/catalog/ObjectLookup.h"
#include "localdb/catalog/OdbcTypes.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

namespace {

using engine::SystemCall;

constexpr const char* TypeName =
    "CASE WHEN EXISTS (SELECT 1 FROM $q_identity i WHERE i.object_id = c.object_id"
    " AND i.column_id = c.column_id) THEN q_type_name(c.type) || ' identity'"
    " WHEN c.user_type <> 0 THEN (SELECT t.name FROM $q_types t WHERE t.user_type = c.user_type)"
    " WHEN c.is_sysname THEN 'sysname' ELSE q_type_name(c.type) END";
constexpr const char* DefaultText =
    "(SELECT q_left(d.definition, 4000) FROM $q_objects d WHERE d.object_id = c.default_id)";

namespace listing {

enum Argument : size_t { Name, Owner, Qualifier, ColumnName, OdbcVersion, UsePattern };

int Run(SystemCall& call) {
    CheckQualifier(call, Qualifier);
    NameFilter filter(call.IsNull(UsePattern) || call.Integer(UsePattern) != 0);
    filter.Add("o.name", call.Text(Name));
    filter.Add("s.name", call.Text(Owner));
    filter.Add("c.name", call.Text(ColumnName));
    std::vector<Column> columns = {Sysname("TABLE_QUALIFIER"), Sysname("TABLE_OWNER"),
                                   Sysname("TABLE_NAME", false), Sysname("COLUMN_NAME", false)};
    OdbcTypes::AddColumns(columns);
    call.Query(columns,
               OdbcTypes::Relation(call.IsNull(OdbcVersion) ? 2 : call.Integer(OdbcVersion)) +
                   "SELECT :db, s.name, o.name, c.name, " +
                   OdbcTypes::Expressions({TypeName, DefaultText, "c.column_id"}) +
                   " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
                   " JOIN $q_columns c ON c.object_id = o.object_id"
                   " CROSS JOIN m ON m.number = q_type_number(c.type) WHERE +o.type IN ('U', 'V')" +
                   filter.Conditions() + " ORDER BY s.name, o.name, c.column_id",
               filter.Parameters());
    return 0;
}

}  // namespace listing

namespace special {

enum Argument : size_t { Name, Owner, Qualifier, Kind, Scope, Nullable, OdbcVersion };

// The primary key, else the first unique index: its columns tell a row from every other.
const engine::IndexInfo* RowIdentifier(const engine::TableInfo& table) {
    const engine::IndexInfo* best = nullptr;
    for (const engine::IndexInfo& index : table.indexes) {
        if (index.primary) return &index;
        if (index.unique && !best) best = &index;
    }
    return best;
}

// Scope 0: as long as the row is current; pseudo column 1: a real column.
std::string RowsOf(const engine::TableInfo& table, const engine::IndexInfo& index,
                   int64_t odbcVersion) {
    return OdbcTypes::Relation(odbcVersion) + "SELECT 0, c.name, " + OdbcTypes::DataType + ", " +
           TypeName + ", " + OdbcTypes::Precision + ", " + OdbcTypes::Length + ", " +
           OdbcTypes::Scale +
           ", 1 FROM $q_index_columns k JOIN $q_columns c ON c.object_id = k.object_id"
           " AND c.column_id = k.column_id CROSS JOIN m ON m.number = q_type_number(c.type)"
           " WHERE k.object_id = " +
           std::to_string(table.object.id) + " AND k.index_id = " + std::to_string(index.id) +
           " ORDER BY k.key_no";
}

int Run(SystemCall& call) {
    CheckQualifier(call, Qualifier);
    call.Begin({SmallInt("SCOPE"), Sysname("COLUMN_NAME", false), SmallInt("DATA_TYPE", false),
                Sysname("TYPE_NAME", false), Int("PRECISION"), Int("LENGTH"), SmallInt("SCALE"),
                SmallInt("PSEUDO_COLUMN")});
    const std::optional<engine::ObjectInfo> object =
        FindTable(call, call.Text(Name), call.Text(Owner));
    // "V" asks for columns that change with every update: there are none.
    const bool wanted = call.IsNull(Kind) || engine::SameName(call.Text(Kind), QStringLiteral("R"));
    if (object && wanted) {
        const engine::TableInfo table = call.GetMetadata().LoadTable(*object);
        if (const engine::IndexInfo* index = RowIdentifier(table)) {
            const int64_t version = call.IsNull(OdbcVersion) ? 2 : call.Integer(OdbcVersion);
            call.Append(call.Database(), RowsOf(table, *index, version), {});
        }
    }
    call.End();
    return 0;
}

}  // namespace special

}  // namespace

std::vector<engine::SystemProcedure> ColumnsProcedures() {
    return {
        {QStringLiteral("sp_columns"),
         {Optional(NVarChar("@table_name", 384)), Optional(NVarChar("@table_owner", 384)),
          Optional(Sysname("@table_qualifier")), Optional(NVarChar("@column_name", 384)),
          Optional(Int("@ODBCVer")), Optional(Bit("@fUsePattern"))},
         listing::Run},
        {QStringLiteral("sp_special_columns"),
         {Required(Sysname("@table_name")), Optional(Sysname("@table_owner")),
          Optional(Sysname("@table_qualifier")), Optional(Char("@col_type", 1)),
          Optional(Char("@scope", 1)), Optional(Char("@nullable", 1)), Optional(Int("@ODBCVer"))},
         special::Run}};
}

}  // namespace quarv::localdb::catalog
