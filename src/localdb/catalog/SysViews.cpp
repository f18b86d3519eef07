#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/catalog/ViewBuilder.h"

namespace quarv::localdb::catalog {

namespace {

using engine::SystemView;

constexpr const char* Schema = "sys";

SystemView Parameters() {
    ViewBuilder view(Schema, "parameters");
    view.Add(Int("object_id", false), "c.object_id")
        .Add(Sysname("name"), "c.name")
        .Add(Int("parameter_id", false), "c.parameter_id")
        .Add(TinyInt("system_type_id", false), "q_type_number(c.type)")
        .Add(Int("user_type_id", false),
             "CASE c.user_type WHEN 0 THEN q_type_number(c.type) ELSE c.user_type END")
        .Add(SmallInt("max_length", false), "q_byte_length(c.type)")
        .Add(TinyInt("precision", false), PrecisionOfType)
        .Add(TinyInt("scale", false), ScaleOfType)
        .Add(Bit("is_output", false), "c.is_output")
        .Add(Bit("is_cursor_ref", false), "0")
        // Known for CLR modules only; a T-SQL parameter's default is in its source.
        .Add(Bit("has_default_value", false), "0")
        .Add(Bit("is_xml_document", false), "0")
        .Add(Int("xml_collection_id", false), "0")
        .Add(Bit("is_readonly", false), "0")
        .Add(Bit("is_nullable"), "1");
    return view.From("FROM $q_parameters c");
}

SystemView Schemas() {
    ViewBuilder view(Schema, "schemas");
    view.Add(Sysname("name", false), "s.name")
        .Add(Int("schema_id", false), "s.schema_id")
        .Add(Int("principal_id"), "CASE WHEN s.schema_id > 4 THEN 1 ELSE s.schema_id END");
    return view.From("FROM $q_schemas s");
}

// A table without a clustered index shows as a heap.
SystemView Indexes() {
    ViewBuilder view(Schema, "indexes");
    view.Add(Int("object_id", false), "i.object_id")
        .Add(Sysname("name"), "i.name")
        .Add(Int("index_id", false), "i.index_id")
        .Add(TinyInt("type", false), "i.kind")
        .Add(NVarChar("type_desc", 60),
             "CASE i.kind WHEN 0 THEN 'HEAP' WHEN 1 THEN 'CLUSTERED' ELSE 'NONCLUSTERED' END")
        .Add(Bit("is_unique"), "i.is_unique")
        .Add(Int("data_space_id"), "1")
        .Add(Bit("ignore_dup_key"), "0")
        .Add(Bit("is_primary_key"), "coalesce(p.type = 'PK', 0)")
        .Add(Bit("is_unique_constraint"), "coalesce(p.type = 'UQ', 0)")
        .Add(TinyInt("fill_factor", false), "0")
        .Add(Bit("is_padded"), "0")
        .Add(Bit("is_disabled"), "0")
        .Add(Bit("is_hypothetical"), "0")
        .Add(Bit("allow_row_locks"), "1")
        .Add(Bit("allow_page_locks"), "1")
        .Add(Bit("has_filter"), "i.filter IS NOT NULL")
        .Add(NVarChar("filter_definition", engine::SqlType::Max), "i.filter")
        .AddNulls({Int("compression_delay")})
        .Add(Bit("suppress_dup_key_messages", false), "0")
        .Add(Bit("auto_created"), "0")
        .Add(Bit("optimize_for_sequential_key"), "0");
    return view.From(
        "FROM (SELECT object_id, name, index_id, is_unique, constraint_id,"
        " CASE is_clustered WHEN 0 THEN 2 ELSE 1 END AS kind, filter FROM $q_indexes"
        " UNION ALL SELECT object_id, NULL, 0, 0, 0, 0, NULL FROM $q_objects t WHERE t.type = 'U'"
        " AND NOT EXISTS (SELECT 1 FROM $q_indexes x WHERE x.object_id = t.object_id"
        " AND x.is_clustered)) i LEFT JOIN $q_objects p ON p.object_id = i.constraint_id");
}

// One partition for each index; where its rows are is nobody's business.
SystemView Partitions() {
    ViewBuilder view(Schema, "partitions");
    view.Add(BigInt("partition_id", false), "i.object_id * 65536 + i.index_id")
        .Add(Int("object_id", false), "i.object_id")
        .Add(Int("index_id", false), "i.index_id")
        .Add(Int("partition_number", false), "1")
        .Add(BigInt("hobt_id", false), "i.object_id * 65536 + i.index_id")
        .Add(BigInt("rows"), "q_row_count('$t' || i.object_id)")
        .Add(SmallInt("filestream_filegroup_id", false), "0")
        .Add(TinyInt("data_compression", false), "0")
        .Add(NVarChar("data_compression_desc", 60), "'NONE'")
        .Add(Bit("xml_compression"), "0")
        .Add(VarChar("xml_compression_desc", 3), "'OFF'");
    return view.From(
        "FROM (SELECT object_id, index_id FROM $q_indexes UNION ALL"
        " SELECT object_id, 0 FROM $q_objects t WHERE t.type = 'U' AND NOT EXISTS"
        " (SELECT 1 FROM $q_indexes x WHERE x.object_id = t.object_id AND x.is_clustered)) i");
}

SystemView IndexColumns() {
    ViewBuilder view(Schema, "index_columns");
    view.Add(Int("object_id", false), "k.object_id")
        .Add(Int("index_id", false), "k.index_id")
        .Add(Int("index_column_id", false), "k.key_no")
        .Add(Int("column_id", false), "k.column_id")
        .Add(TinyInt("key_ordinal", false), "CASE k.included WHEN 0 THEN k.key_no ELSE 0 END")
        .Add(TinyInt("partition_ordinal", false), "0")
        .Add(Bit("is_descending_key"), "k.descending")
        .Add(Bit("is_included_column"), "k.included")
        .Add(TinyInt("column_store_order_ordinal", false), "0");
    return view.From("FROM $q_index_columns k");
}

SystemView SqlModules() {
    ViewBuilder view(Schema, "sql_modules");
    view.Add(Int("object_id", false), "o.object_id")
        .Add(NVarChar("definition", engine::SqlType::Max), "o.definition")
        .Add(Bit("uses_ansi_nulls"), "1")
        .Add(Bit("uses_quoted_identifier"), "1")
        .Add(Bit("is_schema_bound"), "o.schema_bound")
        .Add(Bit("uses_database_collation"), "0")
        .Add(Bit("is_recompiled"), "0")
        .Add(Bit("null_on_null_input"), "0")
        .AddNulls({Int("execute_as_principal_id")})
        .Add(Bit("uses_native_compilation"), "0")
        .Add(Bit("inline_type"), "0")
        .Add(Bit("is_inlineable"), "0");
    return view.From("FROM $q_objects o WHERE o.type IN ('V', 'P')");
}

}  // namespace

std::vector<SystemView> SysViews() {
    return {Parameters(), Schemas(), Indexes(), Partitions(), IndexColumns(), SqlModules()};
}

}  // namespace quarv::localdb::catalog
