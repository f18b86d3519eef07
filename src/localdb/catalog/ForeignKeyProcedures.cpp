#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/NameFilter.h"
#include "localdb/catalog/ObjectLookup.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

namespace {

using engine::SystemCall;

enum Argument : size_t { KeyName, KeyOwner, KeyQualifier, Name, Owner, Qualifier };

// "SQLForeignKeys Function": SQL_CASCADE is 0, SQL_NO_ACTION 1; the others are as they are kept.
std::string Rule(const std::string& action) {
    return "CASE " + action + " WHEN 0 THEN 1 WHEN 1 THEN 0 ELSE " + action + " END";
}

// SQL_NOT_DEFERRABLE is 7.
std::string Keys() {
    return "SELECT :db, ps.name, p.name, pc.name, :db, fs.name, f.name, fc.name, c.key_no, " +
           Rule("k.on_update") + ", " + Rule("k.on_delete") +
           ", n.name, i.name, 7 FROM $q_foreign_keys k"
           " JOIN $q_objects n ON n.object_id = k.object_id"
           " JOIN $q_foreign_key_columns c ON c.object_id = k.object_id"
           " JOIN $q_objects f ON f.object_id = k.table_id"
           " JOIN $q_schemas fs ON fs.schema_id = f.schema_id"
           " JOIN $q_columns fc ON fc.object_id = f.object_id AND fc.column_id = c.column_id"
           " JOIN $q_objects p ON p.object_id = k.referenced_id"
           " JOIN $q_schemas ps ON ps.schema_id = p.schema_id"
           " JOIN $q_columns pc ON pc.object_id = p.object_id"
           " AND pc.column_id = c.referenced_column_id"
           " LEFT JOIN $q_indexes i ON i.object_id = p.object_id AND i.index_id = k.key_index_id"
           " WHERE 1";
}

std::vector<Column> KeysColumns() {
    return {Sysname("PKTABLE_QUALIFIER"),
            Sysname("PKTABLE_OWNER"),
            Sysname("PKTABLE_NAME", false),
            Sysname("PKCOLUMN_NAME", false),
            Sysname("FKTABLE_QUALIFIER"),
            Sysname("FKTABLE_OWNER"),
            Sysname("FKTABLE_NAME", false),
            Sysname("FKCOLUMN_NAME", false),
            SmallInt("KEY_SEQ", false),
            SmallInt("UPDATE_RULE"),
            SmallInt("DELETE_RULE"),
            Sysname("FK_NAME"),
            Sysname("PK_NAME"),
            SmallInt("DEFERRABILITY")};
}

int Run(SystemCall& call) {
    const bool byKey = !call.Text(KeyName).isEmpty();
    if (!byKey && call.Text(Name).isEmpty()) throw engine::SqlError(15252);
    CheckQualifier(call, KeyQualifier);
    CheckQualifier(call, Qualifier);
    NameFilter filter;
    filter.AddExact("p.name", call.Text(KeyName));
    filter.AddExact("ps.name", call.Text(KeyOwner));
    filter.AddExact("f.name", call.Text(Name));
    filter.AddExact("fs.name", call.Text(Owner));
    // What refers to a table comes by the tables that do, what a table refers to by those.
    const char* order = byKey ? " ORDER BY fs.name, f.name, c.key_no, fc.name, n.name"
                              : " ORDER BY ps.name, p.name, c.key_no, pc.name, n.name";
    call.Query(KeysColumns(), Keys() + filter.Conditions() + order, filter.Parameters());
    return 0;
}

}  // namespace

std::vector<engine::SystemProcedure> ForeignKeyProcedures() {
    return {{QStringLiteral("sp_fkeys"),
             {Optional(Sysname("@pktable_name")), Optional(Sysname("@pktable_owner")),
              Optional(Sysname("@pktable_qualifier")), Optional(Sysname("@fktable_name")),
              Optional(Sysname("@fktable_owner")), Optional(Sysname("@fktable_qualifier"))},
             Run}};
}

}  // namespace quarv::localdb::catalog
