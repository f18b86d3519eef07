// INFORMATION_SCHEMA's views of alias types, and those that show what this server does not have:
// rights that somebody granted, sequences and functions that give tables.
#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/InformationNames.h"
#include "localdb/catalog/SystemCatalog.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

constexpr const char* Schema = "INFORMATION_SCHEMA";
constexpr const char* Nothing = "WHERE 0";

void AddCharacters(ViewBuilder& view) {
    view.Add(Int("CHARACTER_MAXIMUM_LENGTH"), "q_char_length(c.type)")
        .Add(Int("CHARACTER_OCTET_LENGTH"), "q_octet_length(c.type)")
        .AddNulls({VarChar("COLLATION_CATALOG", 6), VarChar("COLLATION_SCHEMA", 3)})
        .Add(Sysname("COLLATION_NAME"), CollationOfType())
        .AddNulls({VarChar("CHARACTER_SET_CATALOG", 6), VarChar("CHARACTER_SET_SCHEMA", 3)})
        .Add(Sysname("CHARACTER_SET_NAME"), CharacterSetOfType);
}

SystemView Domains() {
    ViewBuilder view(Schema, "DOMAINS");
    AddNameOf(view, "DOMAIN", "s.name", "c.name");
    view.Add(Sysname("DATA_TYPE"), "q_type_name(c.type)");
    AddCharacters(view);
    view.Add(TinyInt("NUMERIC_PRECISION"), "q_precision(c.type)")
        .Add(SmallInt("NUMERIC_PRECISION_RADIX"), "q_radix(c.type)")
        .Add(TinyInt("NUMERIC_SCALE"), "q_scale(c.type)")
        .Add(SmallInt("DATETIME_PRECISION"), "q_moment_scale(c.type)")
        .AddNulls({NVarChar("DOMAIN_DEFAULT", 4000)});
    return view.From("FROM $q_types c JOIN $q_schemas s ON s.schema_id = c.schema_id");
}

// Rules that are bound to a type: there are none.
SystemView DomainConstraints() {
    ViewBuilder view(Schema, "DOMAIN_CONSTRAINTS");
    AddNoName(view, "CONSTRAINT");
    AddNoName(view, "DOMAIN");
    view.AddNulls({VarChar("IS_DEFERRABLE", 2), VarChar("INITIALLY_DEFERRED", 2)});
    return view.From(Nothing);
}

SystemView ColumnDomainUsage() {
    ViewBuilder view(Schema, "COLUMN_DOMAIN_USAGE");
    AddNameOf(view, "DOMAIN", "z.name", "t.name");
    AddName(view, "TABLE");
    view.Add(Sysname("COLUMN_NAME"), "c.name");
    return view.From(
        "FROM $q_columns c JOIN $q_types t ON t.user_type = c.user_type"
        " JOIN $q_schemas z ON z.schema_id = t.schema_id"
        " JOIN $q_objects o ON o.object_id = c.object_id"
        " JOIN $q_schemas s ON s.schema_id = o.schema_id WHERE c.user_type <> 0");
}

void AddGrant(ViewBuilder& view) {
    view.AddNulls({NVarChar("GRANTOR", 128), NVarChar("GRANTEE", 128)});
    AddNoName(view, "TABLE");
}

SystemView TablePrivileges() {
    ViewBuilder view(Schema, "TABLE_PRIVILEGES");
    AddGrant(view);
    view.AddNulls({VarChar("PRIVILEGE_TYPE", 10), VarChar("IS_GRANTABLE", 3)});
    return view.From(Nothing);
}

SystemView ColumnPrivileges() {
    ViewBuilder view(Schema, "COLUMN_PRIVILEGES");
    AddGrant(view);
    view.AddNulls(
        {Sysname("COLUMN_NAME"), VarChar("PRIVILEGE_TYPE", 10), VarChar("IS_GRANTABLE", 3)});
    return view.From(Nothing);
}

// The four values are sql_variant elsewhere; no row shows the difference.
SystemView Sequences() {
    ViewBuilder view(Schema, "SEQUENCES");
    AddNoName(view, "SEQUENCE");
    view.AddNulls({Sysname("DATA_TYPE"), TinyInt("NUMERIC_PRECISION"),
                   SmallInt("NUMERIC_PRECISION_RADIX"), TinyInt("NUMERIC_SCALE"),
                   BigInt("START_VALUE"), BigInt("MINIMUM_VALUE"), BigInt("MAXIMUM_VALUE"),
                   BigInt("INCREMENT"), Int("CYCLE_OPTION"), Sysname("DECLARED_DATA_TYPE"),
                   TinyInt("DECLARED_NUMERIC_PRECISION"), TinyInt("DECLARED_NUMERIC_SCALE")});
    return view.From(Nothing);
}

SystemView RoutineColumns() {
    ViewBuilder view(Schema, "ROUTINE_COLUMNS");
    AddNoName(view, "TABLE");
    view.AddNulls({Sysname("COLUMN_NAME"), Int("ORDINAL_POSITION"),
                   NVarChar("COLUMN_DEFAULT", 4000), VarChar("IS_NULLABLE", 3),
                   Sysname("DATA_TYPE"), Int("CHARACTER_MAXIMUM_LENGTH"),
                   Int("CHARACTER_OCTET_LENGTH"), TinyInt("NUMERIC_PRECISION"),
                   SmallInt("NUMERIC_PRECISION_RADIX"), Int("NUMERIC_SCALE"),
                   SmallInt("DATETIME_PRECISION")});
    for (const char* what : {"CHARACTER_SET", "COLLATION", "DOMAIN"}) AddNoName(view, what);
    return view.From(Nothing);
}

}  // namespace

std::vector<SystemView> InformationDomains() {
    return {Domains(),          DomainConstraints(), ColumnDomainUsage(), TablePrivileges(),
            ColumnPrivileges(), Sequences(),         RoutineColumns()};
}

}  // namespace quarv::localdb::catalog
