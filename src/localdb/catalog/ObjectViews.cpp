// sys.objects and the views over it that show one kind of object with columns of its own.
#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/ObjectColumns.h"
#include "localdb/catalog/SystemCatalog.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

constexpr const char* Schema = "sys";

constexpr const char* TypeDescription =
    "CASE o.type WHEN 'U' THEN 'USER_TABLE' WHEN 'V' THEN 'VIEW'"
    " WHEN 'P' THEN 'SQL_STORED_PROCEDURE' WHEN 'PK' THEN 'PRIMARY_KEY_CONSTRAINT'"
    " WHEN 'UQ' THEN 'UNIQUE_CONSTRAINT' WHEN 'D' THEN 'DEFAULT_CONSTRAINT'"
    " WHEN 'F' THEN 'FOREIGN_KEY_CONSTRAINT' WHEN 'C' THEN 'CHECK_CONSTRAINT' END";

constexpr const char* OfType = "FROM $q_objects o WHERE o.type = ";

void AddZeroBits(ViewBuilder& view, std::initializer_list<const char*> names,
                 bool nullable = true) {
    for (const char* name : names) view.Add(Bit(name, nullable), "0");
}

SystemView Objects() {
    ViewBuilder view(Schema, "objects");
    AddObjectColumns(view);
    return view.From("FROM $q_objects o");
}

// What one machine's tables are not: replicated, kept in memory, versioned, external.
void AddTableKinds(ViewBuilder& view) {
    view.Add(TinyInt("lock_escalation"), "0").Add(NVarChar("lock_escalation_desc", 60), "'TABLE'");
    AddZeroBits(view, {"is_filetable", "is_memory_optimized"});
    view.Add(TinyInt("durability"), "0")
        .Add(NVarChar("durability_desc", 60), "'SCHEMA_AND_DATA'")
        .Add(TinyInt("temporal_type"), "0")
        .Add(NVarChar("temporal_type_desc", 60), "'NON_TEMPORAL_TABLE'")
        .AddNulls({Int("history_table_id")});
    AddZeroBits(view, {"is_remote_data_archive_enabled"});
    AddZeroBits(view, {"is_external"}, false);
    view.AddNulls({Int("history_retention_period"), Int("history_retention_period_unit"),
                   NVarChar("history_retention_period_unit_desc", 10)});
    AddZeroBits(view, {"is_node", "is_edge"});
    view.AddNulls({Int("data_retention_period"), Int("data_retention_period_unit"),
                   NVarChar("data_retention_period_unit_desc", 10)})
        .Add(TinyInt("ledger_type"), "0")
        .Add(NVarChar("ledger_type_desc", 60), "'NON_LEDGER_TABLE'")
        .AddNulls({Int("ledger_view_id")});
    AddZeroBits(view, {"is_dropped_ledger_table"});
}

SystemView Tables() {
    ViewBuilder view(Schema, "tables");
    AddObjectColumns(view);
    view.AddNulls({Int("lob_data_space_id"), Int("filestream_data_space_id")})
        .Add(Int("max_column_id_used", false), "o.max_column");
    AddZeroBits(view, {"lock_on_bulk_load"}, false);
    view.Add(Bit("uses_ansi_nulls"), "1");
    AddZeroBits(view, {"is_replicated", "has_replication_filter", "is_merge_published",
                       "is_sync_tran_subscribed"});
    AddZeroBits(view, {"has_unchecked_assembly_data"}, false);
    view.Add(Int("text_in_row_limit"), "0");
    AddZeroBits(view, {"large_value_types_out_of_row", "is_tracked_by_cdc"});
    AddTableKinds(view);
    return view.From(std::string(OfType) + "'U'");
}

SystemView Views() {
    ViewBuilder view(Schema, "views");
    AddObjectColumns(view);
    AddZeroBits(view, {"is_replicated", "has_replication_filter"});
    AddZeroBits(view, {"has_opaque_metadata", "has_unchecked_assembly_data"}, false);
    view.Add(Bit("with_check_option", false), "q_checks(o.definition)");
    AddZeroBits(view, {"is_date_correlation_view"}, false);
    AddZeroBits(view, {"is_tracked_by_cdc", "has_snapshot"});
    view.Add(TinyInt("ledger_view_type"), "0")
        .Add(NVarChar("ledger_view_type_desc", 60), "'NON_LEDGER_VIEW'");
    AddZeroBits(view, {"is_dropped_ledger_view"});
    return view.From(std::string(OfType) + "'V'");
}

SystemView Procedures() {
    ViewBuilder view(Schema, "procedures");
    AddObjectColumns(view);
    AddZeroBits(view, {"is_auto_executed"}, false);
    AddZeroBits(view,
                {"is_execution_replicated", "is_repl_serializable_only", "skips_repl_constraints"});
    return view.From(std::string(OfType) + "'P'");
}

}  // namespace

void AddObjectColumns(ViewBuilder& view, const char* shipped) {
    view.Add(Sysname("name", false), "o.name")
        .Add(Int("object_id", false), "o.object_id")
        .AddNulls({Int("principal_id")})
        .Add(Int("schema_id", false), "o.schema_id")
        .Add(Int("parent_object_id", false), "o.parent_id")
        .Add(Char("type", 2), ObjectType)
        .Add(NVarChar("type_desc", 60), TypeDescription)
        .Add(DateTime("create_date", false), "o.created")
        .Add(DateTime("modify_date", false), "o.modified")
        .Add(Bit("is_ms_shipped", false), shipped)
        .Add(Bit("is_published", false), "0")
        .Add(Bit("is_schema_published", false), "0");
}

std::vector<SystemView> ObjectViews() {
    return {Objects(), Tables(), Views(), Procedures()};
}

}  // namespace quarv::localdb::catalog
