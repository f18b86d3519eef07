// INFORMATION_SCHEMA's views of constraints.
#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/InformationNames.h"
#include "localdb/catalog/SystemCatalog.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

constexpr const char* Schema = "INFORMATION_SCHEMA";

// The constraint "k" in its schema "z", of the table "o" in its schema "s". The parent is compared
// with zero so that an index finds the constraints of one table.
constexpr const char* ConstraintsOfTables =
    "FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
    " JOIN $q_objects k ON k.parent_id = o.object_id AND k.parent_id <> 0"
    " JOIN $q_schemas z ON z.schema_id = k.schema_id";

// Their columns: "u" names a constraint, its table, a column and the column's place.
constexpr const char* KeyColumns =
    "SELECT i.constraint_id AS id, i.object_id AS table_id, c.column_id, c.key_no"
    " FROM $q_indexes i JOIN $q_index_columns c ON c.object_id = i.object_id"
    " AND c.index_id = i.index_id WHERE i.constraint_id <> 0"
    " UNION ALL SELECT f.object_id, f.table_id, c.column_id, c.key_no FROM $q_foreign_keys f"
    " JOIN $q_foreign_key_columns c ON c.object_id = f.object_id";
constexpr const char* CheckColumns =
    " UNION ALL SELECT f.object_id, f.table_id, c.column_id, 0 FROM $q_checks f"
    " JOIN $q_objects d ON d.object_id = f.object_id"
    " JOIN $q_columns c ON c.object_id = f.table_id AND q_mentions(d.definition, c.name)";

std::string WithColumns(const std::string& columns) {
    return "FROM (" + columns +
           ") u JOIN $q_objects k ON k.object_id = u.id"
           " JOIN $q_schemas z ON z.schema_id = k.schema_id"
           " JOIN $q_objects o ON o.object_id = u.table_id"
           " JOIN $q_schemas s ON s.schema_id = o.schema_id"
           " JOIN $q_columns c ON c.object_id = u.table_id AND c.column_id = u.column_id";
}

void AddConstraint(ViewBuilder& view) {
    AddNameOf(view, "CONSTRAINT", "z.name", "k.name");
}

SystemView TableConstraints() {
    ViewBuilder view(Schema, "TABLE_CONSTRAINTS");
    AddConstraint(view);
    AddName(view, "TABLE");
    view.Add(VarChar("CONSTRAINT_TYPE", 11),
             "CASE k.type WHEN 'PK' THEN 'PRIMARY KEY' WHEN 'UQ' THEN 'UNIQUE'"
             " WHEN 'F' THEN 'FOREIGN KEY' ELSE 'CHECK' END")
        .Add(VarChar("IS_DEFERRABLE", 2, false), "'NO'")
        .Add(VarChar("INITIALLY_DEFERRED", 2, false), "'NO'");
    return view.From(std::string(ConstraintsOfTables) + " WHERE +k.type IN ('PK', 'UQ', 'F', 'C')");
}

SystemView KeyColumnUsage() {
    ViewBuilder view(Schema, "KEY_COLUMN_USAGE");
    AddConstraint(view);
    AddName(view, "TABLE");
    view.Add(Sysname("COLUMN_NAME"), "c.name").Add(Int("ORDINAL_POSITION", false), "u.key_no");
    return view.From(WithColumns(KeyColumns));
}

std::string RuleText(const std::string& action) {
    return "CASE " + action +
           " WHEN 0 THEN 'NO ACTION' WHEN 1 THEN 'CASCADE' WHEN 2 THEN 'SET NULL'"
           " ELSE 'SET DEFAULT' END";
}

SystemView ReferentialConstraints() {
    ViewBuilder view(Schema, "REFERENTIAL_CONSTRAINTS");
    AddConstraint(view);
    AddNameOf(view, "UNIQUE_CONSTRAINT", "s.name", "i.name", true);
    view.Add(VarChar("MATCH_OPTION", 7), "'SIMPLE'")
        .Add(VarChar("UPDATE_RULE", 11), RuleText("f.on_update"))
        .Add(VarChar("DELETE_RULE", 11), RuleText("f.on_delete"));
    return view.From(
        "FROM $q_foreign_keys f JOIN $q_objects k ON k.object_id = f.object_id"
        " JOIN $q_schemas z ON z.schema_id = k.schema_id"
        " JOIN $q_objects o ON o.object_id = f.referenced_id"
        " JOIN $q_schemas s ON s.schema_id = o.schema_id"
        " LEFT JOIN $q_indexes i ON i.object_id = f.referenced_id"
        " AND i.index_id = f.key_index_id");
}

SystemView CheckConstraints() {
    ViewBuilder view(Schema, "CHECK_CONSTRAINTS");
    AddConstraint(view);
    view.Add(NVarChar("CHECK_CLAUSE", 4000), "q_left(k.definition, 4000)");
    return view.From(
        "FROM $q_checks f JOIN $q_objects k ON k.object_id = f.object_id"
        " JOIN $q_schemas z ON z.schema_id = k.schema_id");
}

// Of a foreign key these are its own table's columns, not those that it refers to.
SystemView ConstraintColumnUsage() {
    ViewBuilder view(Schema, "CONSTRAINT_COLUMN_USAGE");
    AddName(view, "TABLE");
    view.Add(Sysname("COLUMN_NAME"), "c.name");
    AddConstraint(view);
    return view.From(WithColumns(std::string(KeyColumns) + CheckColumns));
}

SystemView ConstraintTableUsage() {
    ViewBuilder view(Schema, "CONSTRAINT_TABLE_USAGE");
    AddName(view, "TABLE");
    AddConstraint(view);
    return view.From(std::string(ConstraintsOfTables) + " WHERE +k.type IN ('PK', 'UQ', 'F', 'C')");
}

}  // namespace

std::vector<SystemView> InformationConstraints() {
    return {TableConstraints(), KeyColumnUsage(),        ReferentialConstraints(),
            CheckConstraints(), ConstraintColumnUsage(), ConstraintTableUsage()};
}

}  // namespace quarv::localdb::catalog
