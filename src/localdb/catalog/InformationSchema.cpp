#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/InformationNames.h"
#include "localdb/catalog/SystemCatalog.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

constexpr const char* Schema = "INFORMATION_SCHEMA";

constexpr const char* ObjectsAndSchemas =
    "FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id";

// The alias type "t" of "c", in its schema "z".
constexpr const char* AliasTypeOf =
    " LEFT JOIN $q_types t ON t.user_type = c.user_type"
    " LEFT JOIN $q_schemas z ON z.schema_id = t.schema_id";

// A condition on the name finds the object by its index: the plus keeps the type out of that
// choice.
SystemView Columns() {
    ViewBuilder view(Schema, "COLUMNS");
    AddName(view, "TABLE");
    view.Add(Sysname("COLUMN_NAME"), "c.name")
        .Add(Int("ORDINAL_POSITION", false), "c.column_id")
        .Add(NVarChar("COLUMN_DEFAULT", 4000),
             "(SELECT q_left(d.definition, 4000) FROM $q_objects d"
             " WHERE d.object_id = c.default_id)")
        .Add(VarChar("IS_NULLABLE", 3), "CASE c.nullable WHEN 0 THEN 'NO' ELSE 'YES' END")
        .Add(NVarChar("DATA_TYPE", 128), "q_type_name(c.type)")
        .Add(Int("CHARACTER_MAXIMUM_LENGTH"), "q_char_length(c.type)")
        .Add(Int("CHARACTER_OCTET_LENGTH"), "q_octet_length(c.type)");
    AddDigits(view);
    AddOnlyName(view, "CHARACTER_SET", CharacterSetOfType);
    AddOnlyName(view, "COLLATION", CollationOfType());
    AddNameOf(view, "DOMAIN", "z.name", "t.name", true);
    return view.From(std::string(ObjectsAndSchemas) +
                     " JOIN $q_columns c ON c.object_id = o.object_id" + AliasTypeOf +
                     " WHERE +o.type IN ('U', 'V')");
}

SystemView Tables() {
    ViewBuilder view(Schema, "TABLES");
    AddName(view, "TABLE");
    view.Add(VarChar("TABLE_TYPE", 10), "CASE o.type WHEN 'U' THEN 'BASE TABLE' ELSE 'VIEW' END");
    return view.From(std::string(ObjectsAndSchemas) + " WHERE +o.type IN ('U', 'V')");
}

SystemView Views() {
    ViewBuilder view(Schema, "VIEWS");
    AddName(view, "TABLE");
    view.Add(NVarChar("VIEW_DEFINITION", 4000), "q_left(o.definition, 4000)")
        .Add(VarChar("CHECK_OPTION", 7),
             "CASE WHEN q_checks(o.definition) THEN 'CASCADE' ELSE 'NONE' END")
        .Add(VarChar("IS_UPDATABLE", 2), "'NO'");
    return view.From(std::string(ObjectsAndSchemas) + " WHERE +o.type = 'V'");
}

// The table "o" that row "u" of a view "v" names, its parts beginning behind the first `skipped` of
// the row; those of other databases are not known by number.
std::string NamedTable(int skipped) {
    const auto part = [skipped](int place) {
        return "u.value ->> " + std::to_string(skipped + place);
    };
    return " CROSS JOIN $q_schemas s ON s.name = coalesce(nullif(" + part(1) +
           ", ''), 'dbo') CROSS JOIN $q_objects o ON o.schema_id = s.schema_id AND o.name = " +
           part(2) + " AND o.type IN ('U', 'V') AND (" + part(0) + " = '' OR " + part(0) +
           " = :db COLLATE tsql)";
}

SystemView ViewTableUsage() {
    ViewBuilder view(Schema, "VIEW_TABLE_USAGE");
    AddNameOf(view, "VIEW", "z.name", "v.name");
    AddName(view, "TABLE");
    return view.From(
        "FROM $q_objects v JOIN $q_schemas z ON z.schema_id = v.schema_id"
        " CROSS JOIN json_each(q_view_tables(v.definition)) u" +
        NamedTable(0) + " WHERE v.type = 'V'");
}

// Of several tables with such a column the one nearest to the name is meant.
SystemView ViewColumnUsage() {
    ViewBuilder view(Schema, "VIEW_COLUMN_USAGE");
    AddNameOf(view, "VIEW", "z.name", "v.name");
    AddName(view, "TABLE");
    view.Add(Sysname("COLUMN_NAME"), "c.name");
    return view.From(
        "FROM (SELECT DISTINCT view_id, table_id, column_id FROM (SELECT v.object_id AS view_id,"
        " o.object_id AS table_id, c.column_id AS column_id, min(u.value ->> 1)"
        " FROM $q_objects v CROSS JOIN json_each(q_view_columns(v.definition)) u" +
        NamedTable(2) +
        " CROSS JOIN $q_columns c ON c.object_id = o.object_id"
        " AND (u.value ->> 5 IS NULL OR c.name = u.value ->> 5) WHERE v.type = 'V'"
        " GROUP BY v.object_id, u.value ->> 0,"
        " CASE WHEN u.value ->> 5 IS NULL THEN c.column_id END)) n"
        " JOIN $q_objects v ON v.object_id = n.view_id"
        " JOIN $q_schemas z ON z.schema_id = v.schema_id"
        " JOIN $q_objects o ON o.object_id = n.table_id"
        " JOIN $q_schemas s ON s.schema_id = o.schema_id"
        " JOIN $q_columns c ON c.object_id = n.table_id AND c.column_id = n.column_id");
}

SystemView Schemata() {
    ViewBuilder view(Schema, "SCHEMATA");
    view.Add(NVarChar("CATALOG_NAME", 128), ":db")
        .Add(NVarChar("SCHEMA_NAME", 128, false), "s.name")
        .Add(NVarChar("SCHEMA_OWNER", 128), "CASE WHEN s.schema_id > 4 THEN 'dbo' ELSE s.name END");
    AddOnlyName(view, "DEFAULT_CHARACTER_SET", "'iso_1'");
    return view.From("FROM $q_schemas s");
}

// A procedure has no type of its own.
void AddNoType(ViewBuilder& view) {
    view.AddNulls(
        {Sysname("DATA_TYPE"), Int("CHARACTER_MAXIMUM_LENGTH"), Int("CHARACTER_OCTET_LENGTH")});
    AddNoName(view, "COLLATION");
    AddNoName(view, "CHARACTER_SET");
    view.AddNulls({TinyInt("NUMERIC_PRECISION"), SmallInt("NUMERIC_PRECISION_RADIX"),
                   Int("NUMERIC_SCALE"), SmallInt("DATETIME_PRECISION"),
                   NVarChar("INTERVAL_TYPE", 30), SmallInt("INTERVAL_PRECISION")});
    AddNoName(view, "TYPE_UDT");
    AddNoName(view, "SCOPE");
    view.AddNulls({Int("MAXIMUM_CARDINALITY"), Sysname("DTD_IDENTIFIER")});
}

SystemView Routines() {
    ViewBuilder view(Schema, "ROUTINES");
    AddName(view, "SPECIFIC");
    AddName(view, "ROUTINE");
    view.Add(NVarChar("ROUTINE_TYPE", 20), "'PROCEDURE'");
    AddNoName(view, "MODULE");
    AddNoName(view, "UDT");
    AddNoType(view);
    // The first 4000 characters only; sys.sql_modules and sp_helptext have them all.
    view.Add(NVarChar("ROUTINE_BODY", 30), "'SQL'")
        .Add(NVarChar("ROUTINE_DEFINITION", 4000), "q_left(o.definition, 4000)")
        .AddNulls({Sysname("EXTERNAL_NAME"), NVarChar("EXTERNAL_LANGUAGE", 30),
                   NVarChar("PARAMETER_STYLE", 30)})
        .Add(NVarChar("IS_DETERMINISTIC", 10), "'NO'")
        .Add(NVarChar("SQL_DATA_ACCESS", 30), "'MODIFIES'")
        .AddNulls({NVarChar("IS_NULL_CALL", 10), Sysname("SQL_PATH")})
        .Add(NVarChar("SCHEMA_LEVEL_ROUTINE", 10), "'YES'")
        .Add(SmallInt("MAX_DYNAMIC_RESULT_SETS"), "-1")
        .Add(NVarChar("IS_USER_DEFINED_CAST", 10), "'NO'")
        .Add(NVarChar("IS_IMPLICITLY_INVOCABLE", 10), "'NO'")
        .Add(DateTime("CREATED", false), "o.created")
        .Add(DateTime("LAST_ALTERED", false), "o.modified");
    return view.From(std::string(ObjectsAndSchemas) + " WHERE +o.type = 'P'");
}

SystemView Parameters() {
    ViewBuilder view(Schema, "PARAMETERS");
    AddName(view, "SPECIFIC");
    view.Add(Int("ORDINAL_POSITION", false), "c.parameter_id")
        .Add(NVarChar("PARAMETER_MODE", 10), "CASE c.is_output WHEN 0 THEN 'IN' ELSE 'INOUT' END")
        .Add(NVarChar("IS_RESULT", 10), "'NO'")
        .Add(NVarChar("AS_LOCATOR", 10), "'NO'")
        .Add(Sysname("PARAMETER_NAME"), "c.name")
        .Add(Sysname("DATA_TYPE"), "q_type_name(c.type)")
        .Add(Int("CHARACTER_MAXIMUM_LENGTH"), "q_char_length(c.type)")
        .Add(Int("CHARACTER_OCTET_LENGTH"), "q_octet_length(c.type)");
    AddOnlyName(view, "COLLATION", CollationOfType());
    AddOnlyName(view, "CHARACTER_SET", CharacterSetOfType);
    AddDigits(view);
    view.AddNulls({NVarChar("INTERVAL_TYPE", 30), SmallInt("INTERVAL_PRECISION")});
    AddNameOf(view, "USER_DEFINED_TYPE", "z.name", "t.name", true);
    AddNoName(view, "SCOPE");
    return view.From(std::string(ObjectsAndSchemas) +
                     " JOIN $q_parameters c ON c.object_id = o.object_id" + AliasTypeOf +
                     " WHERE +o.type = 'P'");
}

}  // namespace

std::vector<SystemView> InformationSchemaViews() {
    return {Columns(), Parameters(),      Routines(),       Schemata(),
            Tables(),  ViewColumnUsage(), ViewTableUsage(), Views()};
}

}  // namespace quarv::localdb::catalog
