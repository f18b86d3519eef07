#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/catalog/ViewBuilder.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

constexpr const char* Schema = "INFORMATION_SCHEMA";

constexpr const char* CharacterSet =
    "CASE WHEN q_type_number(c.type) IN (99, 231, 239) THEN 'UNICODE'"
    " WHEN q_type_number(c.type) IN (35, 167, 175) THEN 'iso_1' END";

constexpr const char* ObjectsAndSchemas =
    "FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id";

// "TABLE" gives TABLE_CATALOG, TABLE_SCHEMA and TABLE_NAME of the object.
void AddName(ViewBuilder& view, const std::string& what) {
    view.Add(NVarChar((what + "_CATALOG").c_str(), 128), ":db")
        .Add(NVarChar((what + "_SCHEMA").c_str(), 128), "s.name")
        .Add(Sysname((what + "_NAME").c_str(), false), "o.name");
}

void AddNoName(ViewBuilder& view, const std::string& what) {
    view.AddNulls({Sysname((what + "_CATALOG").c_str()), Sysname((what + "_SCHEMA").c_str()),
                   Sysname((what + "_NAME").c_str())});
}

// Of the three columns of a collation or a character set the name alone is given.
void AddOnlyName(ViewBuilder& view, const std::string& what, const std::string& expression) {
    view.AddNulls({Sysname((what + "_CATALOG").c_str()), Sysname((what + "_SCHEMA").c_str())});
    view.Add(Sysname((what + "_NAME").c_str()), expression);
}

void AddDigits(ViewBuilder& view) {
    view.Add(TinyInt("NUMERIC_PRECISION"), "q_precision(c.type)")
        .Add(SmallInt("NUMERIC_PRECISION_RADIX"), "q_radix(c.type)")
        .Add(Int("NUMERIC_SCALE"), "q_scale(c.type)")
        .Add(SmallInt("DATETIME_PRECISION"), "q_moment_scale(c.type)");
}

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
    AddOnlyName(view, "CHARACTER_SET", CharacterSet);
    AddOnlyName(view, "COLLATION", CollationOfType());
    AddNoName(view, "DOMAIN");
    return view.From(std::string(ObjectsAndSchemas) +
                     " JOIN $q_columns c ON c.object_id = o.object_id"
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

SystemView Schemata() {
    ViewBuilder view(Schema, "SCHEMATA");
    view.Add(NVarChar("CATALOG_NAME", 128), ":db")
        .Add(NVarChar("SCHEMA_NAME", 128, false), "s.name")
        .Add(NVarChar("SCHEMA_OWNER", 128), "s.name");
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
    AddOnlyName(view, "CHARACTER_SET", CharacterSet);
    AddDigits(view);
    view.AddNulls({NVarChar("INTERVAL_TYPE", 30), SmallInt("INTERVAL_PRECISION")});
    AddNoName(view, "USER_DEFINED_TYPE");
    AddNoName(view, "SCOPE");
    return view.From(std::string(ObjectsAndSchemas) +
                     " JOIN $q_parameters c ON c.object_id = o.object_id WHERE +o.type = 'P'");
}

}  // namespace

std::vector<SystemView> InformationSchemaViews() {
    return {Columns(), Parameters(), Routines(), Schemata(), Tables(), Views()};
}

}  // namespace quarv::localdb::catalog
