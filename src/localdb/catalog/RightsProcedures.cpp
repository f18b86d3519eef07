// sp_table_privileges and sp_column_privileges: who may do what; and sp_who. All belongs to dbo,
// and nobody else was granted anything.
#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/NameFilter.h"
#include "localdb/catalog/ObjectLookup.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

namespace {

using engine::SystemCall;

enum TableArgument : size_t { TableName, TableOwner, TableQualifier, TableUsesPattern };
enum ColumnArgument : size_t { Name, Owner, Qualifier, ColumnName };

// By name, as the results are ordered.
constexpr const char* TableRights =
    "(VALUES ('DELETE'), ('INSERT'), ('REFERENCES'), ('SELECT'), ('UPDATE')) p";
constexpr const char* ColumnRights =
    "(VALUES ('INSERT'), ('REFERENCES'), ('SELECT'), ('UPDATE')) p";

int RunTablePrivileges(SystemCall& call) {
    CheckQualifier(call, TableQualifier);
    NameFilter filter(call.IsNull(TableUsesPattern) || call.Integer(TableUsesPattern) != 0);
    filter.Add("o.name", call.Text(TableName));
    filter.Add("s.name", call.Text(TableOwner));
    call.Query({Sysname("TABLE_QUALIFIER"), Sysname("TABLE_OWNER"), Sysname("TABLE_NAME", false),
                Sysname("GRANTOR"), Sysname("GRANTEE"), VarChar("PRIVILEGE", 32, false),
                VarChar("IS_GRANTABLE", 3)},
               "SELECT :db, s.name, o.name, 'dbo', 'dbo', p.column1, 'YES'"
               " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id CROSS JOIN " +
                   std::string(TableRights) + " WHERE +o.type IN ('U', 'V')" + filter.Conditions() +
                   " ORDER BY s.name, o.name, p.column1",
               filter.Parameters());
    return 0;
}

int RunColumnPrivileges(SystemCall& call) {
    CheckQualifier(call, Qualifier);
    NameFilter filter;
    filter.AddExact("o.name", call.Text(Name));
    filter.AddExact("s.name", call.Text(Owner));
    filter.Add("c.name", call.Text(ColumnName));
    call.Query({Sysname("TABLE_QUALIFIER"), Sysname("TABLE_OWNER"), Sysname("TABLE_NAME", false),
                Sysname("COLUMN_NAME", false), Sysname("GRANTOR"), Sysname("GRANTEE"),
                VarChar("PRIVILEGE", 32, false), VarChar("IS_GRANTABLE", 3)},
               "SELECT :db, s.name, o.name, c.name, 'dbo', 'dbo', p.column1, 'YES'"
               " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
               " JOIN $q_columns c ON c.object_id = o.object_id CROSS JOIN " +
                   std::string(ColumnRights) + " WHERE +o.type IN ('U', 'V')" +
                   filter.Conditions() + " ORDER BY s.name, o.name, c.name, p.column1",
               filter.Parameters());
    return 0;
}

// Of a login, a number or ACTIVE; only the caller's own session is shown, as to everybody who may
// not see the server's state.
int RunWho(SystemCall& call) {
    const SystemCall::Client& client = call.GetClient();
    const QString asked = call.Text(0).trimmed();
    bool isNumber = false;
    const int number = asked.toInt(&isNumber);
    const bool active = engine::SameName(asked, QStringLiteral("active"));
    const bool own = engine::SameName(asked, client.login);
    if (!asked.isEmpty() && !isNumber && !active && !own) {
        throw engine::SqlError(15007, {asked});
    }
    call.Begin({SmallInt("spid", false), SmallInt("ecid", false), NChar("status", 30, false),
                NVarChar("loginame", 128), NChar("hostname", 128, false), Char("blk", 5),
                NVarChar("dbname", 128), NChar("cmd", 16, false), Int("request_id", false)});
    if (!isNumber || number == client.id) {
        call.Row({Value(int64_t{client.id}), Value(int64_t{0}),
                  Value(QStringLiteral("runnable").leftJustified(30, u' ')), Value(client.login),
                  Value(client.host.left(128).leftJustified(128, u' ')),
                  Value(QStringLiteral("0    ")), Value(client.database),
                  Value(QStringLiteral("SELECT").leftJustified(16, u' ')), Value(int64_t{0})});
    }
    call.End();
    return 0;
}

}  // namespace

std::vector<engine::SystemProcedure> RightsProcedures() {
    return {{QStringLiteral("sp_table_privileges"),
             {Required(NVarChar("@table_name", 384)), Optional(NVarChar("@table_owner", 384)),
              Optional(Sysname("@table_qualifier")), Optional(Bit("@fUsePattern"))},
             RunTablePrivileges},
            {QStringLiteral("sp_column_privileges"),
             {Required(Sysname("@table_name")), Optional(Sysname("@table_owner")),
              Optional(Sysname("@table_qualifier")), Optional(NVarChar("@column_name", 384))},
             RunColumnPrivileges},
            {QStringLiteral("sp_who"), {Optional(Sysname("@loginame"))}, RunWho}};
}

}  // namespace quarv::localdb::catalog
