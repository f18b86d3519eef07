#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/NameFilter.h"
#include "localdb/catalog/ObjectLookup.h"
#include "localdb/catalog/OdbcTypes.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/SystemCall.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::catalog {

namespace {

using engine::SystemCall;

// Without the version suffix that the results show behind each name.
QString BareName(const QString& name) {
    return name.section(u';', 0, 0);
}

namespace listing {

enum Argument : size_t { Name, Owner, Qualifier, UsePattern };

int Run(SystemCall& call) {
    CheckQualifier(call, Qualifier);
    NameFilter filter(call.IsNull(UsePattern) || call.Integer(UsePattern) != 0);
    filter.Add("o.name", BareName(call.Text(Name)));
    filter.Add("s.name", call.Text(Owner));
    call.Begin({Sysname("PROCEDURE_QUALIFIER"), Sysname("PROCEDURE_OWNER"),
                NVarChar("PROCEDURE_NAME", 134, false), Int("NUM_INPUT_PARAMS"),
                Int("NUM_OUTPUT_PARAMS"), Int("NUM_RESULT_SETS"), VarChar("REMARKS", 254),
                SmallInt("PROCEDURE_TYPE")});
    // Schema by schema, so that the index over type, schema and name gives them in order.
    for (const int schema : call.GetMetadata().SchemasWith(QStringLiteral("P"))) {
        call.Append(call.Database(),
                    "SELECT :db, s.name, o.name || ';1', -1, -1, -1, NULL, 2"
                    " FROM $q_objects o CROSS JOIN $q_schemas s ON s.schema_id = o.schema_id"
                    " WHERE o.type = 'P' AND o.schema_id = " +
                        std::to_string(schema) + filter.Conditions() + " ORDER BY o.name",
                    filter.Parameters());
    }
    call.End();
    return 0;
}

}  // namespace listing

namespace parameters {

enum Argument : size_t { Name, Owner, Qualifier, ColumnName, OdbcVersion, UsePattern };

constexpr const char* TypeName =
    "CASE c.user_type WHEN 0 THEN q_type_name(c.type)"
    " ELSE (SELECT t.name FROM $q_types t WHERE t.user_type = c.user_type) END";

// The status that every procedure returns goes before its parameters, as an int.
std::string Source() {
    return "(SELECT object_id, parameter_id, name, type, user_type, CASE is_output WHEN 0 THEN 1 "
           "ELSE 2 END"
           " AS mode, 1 AS nullable FROM $q_parameters"
           " UNION ALL SELECT object_id, 0, '@RETURN_VALUE', " +
           std::to_string(engine::PackType(engine::IntType())) +
           ", 0, 5, 0 FROM $q_objects WHERE type = 'P')";
}

int Run(SystemCall& call) {
    CheckQualifier(call, Qualifier);
    NameFilter filter(call.IsNull(UsePattern) || call.Integer(UsePattern) != 0);
    filter.Add("o.name", BareName(call.Text(Name)));
    filter.Add("s.name", call.Text(Owner));
    filter.Add("c.name", call.Text(ColumnName));
    std::vector<Column> columns = {Sysname("PROCEDURE_QUALIFIER"), Sysname("PROCEDURE_OWNER"),
                                   NVarChar("PROCEDURE_NAME", 134, false),
                                   Sysname("COLUMN_NAME", false), SmallInt("COLUMN_TYPE", false)};
    OdbcTypes::AddColumns(columns);
    call.Query(
        columns,
        OdbcTypes::Relation(call.IsNull(OdbcVersion) ? 2 : call.Integer(OdbcVersion)) +
            "SELECT :db, s.name, o.name || ';1', c.name, c.mode, " +
            OdbcTypes::Expressions({TypeName, "NULL", "c.parameter_id"}) +
            " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id JOIN " + Source() +
            " c ON c.object_id = o.object_id CROSS JOIN m ON m.number = q_type_number(c.type)"
            " WHERE o.type = 'P'" +
            filter.Conditions() + " ORDER BY s.name, o.name, c.parameter_id",
        filter.Parameters());
    return 0;
}

}  // namespace parameters

}  // namespace

std::vector<engine::SystemProcedure> RoutinesProcedures() {
    return {
        {QStringLiteral("sp_stored_procedures"),
         {Optional(NVarChar("@sp_name", 390)), Optional(NVarChar("@sp_owner", 384)),
          Optional(Sysname("@sp_qualifier")), Optional(Bit("@fUsePattern"))},
         listing::Run},
        {QStringLiteral("sp_sproc_columns"),
         {Optional(NVarChar("@procedure_name", 390)), Optional(NVarChar("@procedure_owner", 384)),
          Optional(Sysname("@procedure_qualifier")), Optional(NVarChar("@column_name", 384)),
          Optional(Int("@ODBCVer")), Optional(Bit("@fUsePattern"))},
         parameters::Run}};
}

}  // namespace quarv::localdb::catalog
