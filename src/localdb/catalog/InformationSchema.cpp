#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/Collation.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

const QString Schema = QStringLiteral("INFORMATION_SCHEMA");

// "a AS v1, b AS v2, ...": the engine finds a view's columns by these names.
std::string Select(const std::vector<const char*>& expressions) {
    std::string sql = "SELECT ";
    int number = 0;
    for (const char* expression : expressions) {
        if (number > 0) sql += ", ";
        sql += expression;
        sql += " AS v" + std::to_string(++number);
    }
    return sql;
}

const std::string& CollationSql() {
    static const std::string sql = "CASE WHEN q_char_length(c.type) IS NOT NULL THEN '" +
                                   engine::Collation::Name().toStdString() + "' END";
    return sql;
}

// Unicode kinds have no character set but UNICODE; the others are UTF-8.
constexpr const char* CharacterSetSql =
    "CASE WHEN q_type_number(c.type) IN (231, 239) THEN 'UNICODE'"
    " WHEN q_char_length(c.type) IS NOT NULL THEN 'utf_8' END";

SystemView Columns() {
    SystemView view{Schema, QStringLiteral("COLUMNS"), {}, {}};
    view.columns = {NVarChar("TABLE_CATALOG", 128),
                    NVarChar("TABLE_SCHEMA", 128),
                    Sysname("TABLE_NAME", false),
                    Sysname("COLUMN_NAME"),
                    Int("ORDINAL_POSITION"),
                    NVarChar("COLUMN_DEFAULT", 4000),
                    VarChar("IS_NULLABLE", 3),
                    NVarChar("DATA_TYPE", 128),
                    Int("CHARACTER_MAXIMUM_LENGTH"),
                    Int("CHARACTER_OCTET_LENGTH"),
                    TinyInt("NUMERIC_PRECISION"),
                    SmallInt("NUMERIC_PRECISION_RADIX"),
                    Int("NUMERIC_SCALE"),
                    SmallInt("DATETIME_PRECISION"),
                    Sysname("CHARACTER_SET_CATALOG"),
                    Sysname("CHARACTER_SET_SCHEMA"),
                    Sysname("CHARACTER_SET_NAME"),
                    Sysname("COLLATION_CATALOG"),
                    Sysname("COLLATION_SCHEMA"),
                    Sysname("COLLATION_NAME"),
                    Sysname("DOMAIN_CATALOG"),
                    Sysname("DOMAIN_SCHEMA"),
                    Sysname("DOMAIN_NAME")};
    view.sql = Select({":db",
                       "s.name",
                       "o.name",
                       "c.name",
                       "c.column_id",
                       "d.definition",
                       "CASE c.nullable WHEN 0 THEN 'NO' ELSE 'YES' END",
                       "q_type_name(c.type)",
                       "q_char_length(c.type)",
                       "q_octet_length(c.type)",
                       "q_precision(c.type)",
                       "q_radix(c.type)",
                       "q_scale(c.type)",
                       "q_moment_scale(c.type)",
                       "NULL",
                       "NULL",
                       CharacterSetSql,
                       "NULL",
                       "NULL",
                       CollationSql().c_str(),
                       "NULL",
                       "NULL",
                       "NULL"}) +
               " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
               " JOIN $q_columns c ON c.object_id = o.object_id"
               " LEFT JOIN $q_objects d ON d.object_id = c.default_id"
               " WHERE o.type IN ('U', 'V')";
    return view;
}

SystemView Tables() {
    SystemView view{Schema, QStringLiteral("TABLES"), {}, {}};
    view.columns = {NVarChar("TABLE_CATALOG", 128), Sysname("TABLE_SCHEMA"),
                    Sysname("TABLE_NAME", false), VarChar("TABLE_TYPE", 10)};
    view.sql = Select({":db", "s.name", "o.name",
                       "CASE o.type WHEN 'U' THEN 'BASE TABLE' ELSE 'VIEW' END"}) +
               " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
               " WHERE o.type IN ('U', 'V')";
    return view;
}

SystemView Schemata() {
    SystemView view{Schema, QStringLiteral("SCHEMATA"), {}, {}};
    view.columns = {
        NVarChar("CATALOG_NAME", 128),           Sysname("SCHEMA_NAME", false),
        NVarChar("SCHEMA_OWNER", 128),           Sysname("DEFAULT_CHARACTER_SET_CATALOG"),
        Sysname("DEFAULT_CHARACTER_SET_SCHEMA"), Sysname("DEFAULT_CHARACTER_SET_NAME")};
    view.sql =
        Select({":db", "s.name", "s.name", "NULL", "NULL", "'utf_8'"}) + " FROM $q_schemas s";
    return view;
}

SystemView Routines() {
    SystemView view{Schema, QStringLiteral("ROUTINES"), {}, {}};
    std::vector<const char*> sql;
    const auto add = [&view, &sql](Column column, const char* expression) {
        view.columns.push_back(std::move(column));
        sql.push_back(expression);
    };
    add(NVarChar("SPECIFIC_CATALOG", 128), ":db");
    add(Sysname("SPECIFIC_SCHEMA"), "s.name");
    add(Sysname("SPECIFIC_NAME", false), "o.name");
    add(NVarChar("ROUTINE_CATALOG", 128), ":db");
    add(Sysname("ROUTINE_SCHEMA"), "s.name");
    add(Sysname("ROUTINE_NAME", false), "o.name");
    add(NVarChar("ROUTINE_TYPE", 20), "'PROCEDURE'");
    for (const char* name : {"MODULE_CATALOG", "MODULE_SCHEMA", "MODULE_NAME", "UDT_CATALOG",
                             "UDT_SCHEMA", "UDT_NAME", "DATA_TYPE"}) {
        add(Sysname(name), "NULL");
    }
    add(Int("CHARACTER_MAXIMUM_LENGTH"), "NULL");
    add(Int("CHARACTER_OCTET_LENGTH"), "NULL");
    for (const char* name :
         {"COLLATION_CATALOG", "COLLATION_SCHEMA", "COLLATION_NAME", "CHARACTER_SET_CATALOG",
          "CHARACTER_SET_SCHEMA", "CHARACTER_SET_NAME"}) {
        add(Sysname(name), "NULL");
    }
    add(TinyInt("NUMERIC_PRECISION"), "NULL");
    add(SmallInt("NUMERIC_PRECISION_RADIX"), "NULL");
    add(Int("NUMERIC_SCALE"), "NULL");
    add(SmallInt("DATETIME_PRECISION"), "NULL");
    add(NVarChar("INTERVAL_TYPE", 30), "NULL");
    add(SmallInt("INTERVAL_PRECISION"), "NULL");
    for (const char* name : {"TYPE_UDT_CATALOG", "TYPE_UDT_SCHEMA", "TYPE_UDT_NAME",
                             "SCOPE_CATALOG", "SCOPE_SCHEMA", "SCOPE_NAME"}) {
        add(Sysname(name), "NULL");
    }
    add(Int("MAXIMUM_CARDINALITY"), "NULL");
    add(Sysname("DTD_IDENTIFIER"), "NULL");
    add(NVarChar("ROUTINE_BODY", 30), "'SQL'");
    // The view shows the first 4000 characters only; sys.sql_modules and sp_helptext have them all.
    add(NVarChar("ROUTINE_DEFINITION", 4000), "q_left(o.definition, 4000)");
    add(Sysname("EXTERNAL_NAME"), "NULL");
    add(NVarChar("EXTERNAL_LANGUAGE", 30), "NULL");
    add(NVarChar("PARAMETER_STYLE", 30), "NULL");
    add(NVarChar("IS_DETERMINISTIC", 10), "'NO'");
    add(NVarChar("SQL_DATA_ACCESS", 30), "'MODIFIES'");
    add(NVarChar("IS_NULL_CALL", 10), "NULL");
    add(Sysname("SQL_PATH"), "NULL");
    add(NVarChar("SCHEMA_LEVEL_ROUTINE", 10), "'YES'");
    add(SmallInt("MAX_DYNAMIC_RESULT_SETS"), "-1");
    add(NVarChar("IS_USER_DEFINED_CAST", 10), "'NO'");
    add(NVarChar("IS_IMPLICITLY_INVOCABLE", 10), "'NO'");
    add(DateTime("CREATED", false), "o.created");
    add(DateTime("LAST_ALTERED", false), "o.modified");
    view.sql = Select(sql) +
               " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
               " WHERE o.type = 'P'";
    return view;
}

SystemView Parameters() {
    SystemView view{Schema, QStringLiteral("PARAMETERS"), {}, {}};
    view.columns = {NVarChar("SPECIFIC_CATALOG", 128),
                    Sysname("SPECIFIC_SCHEMA"),
                    Sysname("SPECIFIC_NAME", false),
                    Int("ORDINAL_POSITION", false),
                    NVarChar("PARAMETER_MODE", 10),
                    NVarChar("IS_RESULT", 10),
                    NVarChar("AS_LOCATOR", 10),
                    Sysname("PARAMETER_NAME"),
                    Sysname("DATA_TYPE"),
                    Int("CHARACTER_MAXIMUM_LENGTH"),
                    Int("CHARACTER_OCTET_LENGTH"),
                    Sysname("COLLATION_CATALOG"),
                    Sysname("COLLATION_SCHEMA"),
                    Sysname("COLLATION_NAME"),
                    Sysname("CHARACTER_SET_CATALOG"),
                    Sysname("CHARACTER_SET_SCHEMA"),
                    Sysname("CHARACTER_SET_NAME"),
                    TinyInt("NUMERIC_PRECISION"),
                    SmallInt("NUMERIC_PRECISION_RADIX"),
                    Int("NUMERIC_SCALE"),
                    SmallInt("DATETIME_PRECISION"),
                    NVarChar("INTERVAL_TYPE", 30),
                    SmallInt("INTERVAL_PRECISION"),
                    Sysname("USER_DEFINED_TYPE_CATALOG"),
                    Sysname("USER_DEFINED_TYPE_SCHEMA"),
                    Sysname("USER_DEFINED_TYPE_NAME"),
                    Sysname("SCOPE_CATALOG"),
                    Sysname("SCOPE_SCHEMA"),
                    Sysname("SCOPE_NAME")};
    view.sql = Select({":db",
                       "s.name",
                       "o.name",
                       "c.parameter_id",
                       "CASE c.is_output WHEN 0 THEN 'IN' ELSE 'INOUT' END",
                       "'NO'",
                       "'NO'",
                       "c.name",
                       "q_type_name(c.type)",
                       "q_char_length(c.type)",
                       "q_octet_length(c.type)",
                       "NULL",
                       "NULL",
                       CollationSql().c_str(),
                       "NULL",
                       "NULL",
                       CharacterSetSql,
                       "q_precision(c.type)",
                       "q_radix(c.type)",
                       "q_scale(c.type)",
                       "q_moment_scale(c.type)",
                       "NULL",
                       "NULL",
                       "NULL",
                       "NULL",
                       "NULL",
                       "NULL",
                       "NULL",
                       "NULL"}) +
               " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
               " JOIN $q_parameters c ON c.object_id = o.object_id WHERE o.type = 'P'";
    return view;
}

}  // namespace

std::vector<SystemView> InformationSchemaViews() {
    return {Columns(), Parameters(), Routines(), Schemata(), Tables()};
}

}  // namespace quarv::localdb::catalog
