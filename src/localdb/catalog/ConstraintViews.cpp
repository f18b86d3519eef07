// sys.key_constraints, sys.foreign_keys and their like: the constraints of tables.
#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/ObjectColumns.h"
#include "localdb/catalog/SystemCatalog.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

constexpr const char* Schema = "sys";

// The parent is compared with zero so that an index finds the constraints of one table.
constexpr const char* Constraints = "FROM $q_objects o JOIN ";
constexpr const char* OfTables = " WHERE o.parent_id <> 0";

SystemView KeyConstraints() {
    ViewBuilder view(Schema, "key_constraints");
    AddObjectColumns(view);
    view.Add(Int("unique_index_id"), "i.index_id")
        .Add(Bit("is_system_named", false), "o.system_named")
        .Add(Bit("is_enforced", false), "1");
    return view.From(std::string(Constraints) +
                     "$q_indexes i ON i.object_id = o.parent_id"
                     " AND i.constraint_id = o.object_id" +
                     OfTables);
}

std::string ActionText(const std::string& action) {
    return "CASE " + action +
           " WHEN 0 THEN 'NO_ACTION' WHEN 1 THEN 'CASCADE' WHEN 2 THEN 'SET_NULL'"
           " ELSE 'SET_DEFAULT' END";
}

SystemView ForeignKeys() {
    ViewBuilder view(Schema, "foreign_keys");
    AddObjectColumns(view);
    view.Add(Int("referenced_object_id"), "k.referenced_id")
        .Add(Int("key_index_id"), "k.key_index_id")
        .Add(Bit("is_disabled", false), "k.is_disabled")
        .Add(Bit("is_not_for_replication", false), "0")
        .Add(Bit("is_not_trusted", false), "k.is_not_trusted")
        .Add(TinyInt("delete_referential_action"), "k.on_delete")
        .Add(NVarChar("delete_referential_action_desc", 60), ActionText("k.on_delete"))
        .Add(TinyInt("update_referential_action"), "k.on_update")
        .Add(NVarChar("update_referential_action_desc", 60), ActionText("k.on_update"))
        .Add(Bit("is_system_named", false), "o.system_named");
    return view.From(std::string(Constraints) + "$q_foreign_keys k ON k.object_id = o.object_id" +
                     OfTables);
}

SystemView ForeignKeyColumns() {
    ViewBuilder view(Schema, "foreign_key_columns");
    view.Add(Int("constraint_object_id", false), "k.object_id")
        .Add(Int("constraint_column_id", false), "c.key_no")
        .Add(Int("parent_object_id", false), "k.table_id")
        .Add(Int("parent_column_id", false), "c.column_id")
        .Add(Int("referenced_object_id", false), "k.referenced_id")
        .Add(Int("referenced_column_id", false), "c.referenced_column_id");
    return view.From(
        "FROM $q_foreign_keys k JOIN $q_foreign_key_columns c ON c.object_id = k.object_id");
}

SystemView CheckConstraints() {
    ViewBuilder view(Schema, "check_constraints");
    AddObjectColumns(view);
    view.Add(Bit("is_disabled", false), "k.is_disabled")
        .Add(Bit("is_not_for_replication", false), "0")
        .Add(Bit("is_not_trusted", false), "k.is_not_trusted")
        .Add(Int("parent_column_id", false), "k.column_id")
        .Add(NVarChar("definition", engine::SqlType::Max), "o.definition")
        .Add(Bit("uses_database_collation"), "1")
        .Add(Bit("is_system_named", false), "o.system_named");
    return view.From(std::string(Constraints) + "$q_checks k ON k.object_id = o.object_id" +
                     OfTables);
}

SystemView DefaultConstraints() {
    ViewBuilder view(Schema, "default_constraints");
    AddObjectColumns(view);
    view.Add(Int("parent_column_id", false), "c.column_id")
        .Add(NVarChar("definition", engine::SqlType::Max), "o.definition")
        .Add(Bit("is_system_named", false), "o.system_named");
    return view.From(std::string(Constraints) +
                     "$q_columns c ON c.object_id = o.parent_id"
                     " AND c.default_id = o.object_id" +
                     OfTables + " AND +o.type = 'D'");
}

}  // namespace

std::vector<SystemView> ConstraintViews() {
    return {KeyConstraints(), ForeignKeys(), ForeignKeyColumns(), CheckConstraints(),
            DefaultConstraints()};
}

}  // namespace quarv::localdb::catalog
