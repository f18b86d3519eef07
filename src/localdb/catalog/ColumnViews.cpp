// sys.columns and the views over it that show one kind of column with columns of its own.
#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/catalog/ViewBuilder.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

constexpr const char* Schema = "sys";

// An alias type's number where the column has one.
constexpr const char* UserType =
    "CASE WHEN c.user_type <> 0 THEN c.user_type WHEN c.is_sysname THEN 256"
    " ELSE q_type_number(c.type) END";

constexpr const char* IsIdentity =
    "EXISTS (SELECT 1 FROM $q_identity i WHERE i.object_id = c.object_id"
    " AND i.column_id = c.column_id)";

void AddType(ViewBuilder& view) {
    view.Add(Int("object_id", false), "c.object_id")
        .Add(Sysname("name"), "c.name")
        .Add(Int("column_id", false), "c.column_id")
        .Add(TinyInt("system_type_id", false), "q_type_number(c.type)")
        .Add(Int("user_type_id", false), UserType)
        .Add(SmallInt("max_length", false), "q_byte_length(c.type)")
        .Add(TinyInt("precision", false), PrecisionOfType)
        .Add(TinyInt("scale", false), ScaleOfType)
        .Add(Sysname("collation_name"), CollationOfType())
        .Add(Bit("is_nullable"), "c.nullable")
        .Add(Bit("is_ansi_padded", false), "q_char_length(c.type) IS NOT NULL")
        .Add(Bit("is_rowguidcol", false), "c.is_rowguid");
}

void AddRoles(ViewBuilder& view) {
    for (const char* bit : {"is_filestream", "is_replicated", "is_non_sql_subscribed",
                            "is_merge_published", "is_dts_replicated", "is_xml_document"}) {
        view.Add(Bit(bit, false), "0");
    }
    view.Add(Int("xml_collection_id", false), "0")
        .Add(Int("default_object_id", false), "c.default_id")
        .Add(Int("rule_object_id", false), "0");
}

// What this server's columns are not: encrypted, hidden, parts of a graph or a ledger.
void AddKinds(ViewBuilder& view) {
    view.Add(Bit("is_sparse"), "0")
        .Add(Bit("is_column_set"), "0")
        .Add(TinyInt("generated_always_type"), "0")
        .Add(NVarChar("generated_always_type_desc", 60), "'NOT_APPLICABLE'")
        .AddNulls({Int("encryption_type"), NVarChar("encryption_type_desc", 64),
                   Sysname("encryption_algorithm_name"), Int("column_encryption_key_id"),
                   Sysname("column_encryption_key_database_name")})
        .Add(Bit("is_hidden", false), "0")
        .Add(Bit("is_masked", false), "0")
        .AddNulls({Int("graph_type"), NVarChar("graph_type_desc", 60)})
        .Add(Bit("is_data_deletion_filter_column"), "0")
        .AddNulls({Int("ledger_view_column_type"), NVarChar("ledger_view_column_type_desc", 60)})
        .Add(Bit("is_dropped_ledger_column"), "0");
}

SystemView ComputedColumns() {
    ViewBuilder view(Schema, "computed_columns");
    AddType(view);
    view.Add(Bit("is_identity", false), "0");
    AddRoles(view);
    view.Add(NVarChar("definition", engine::SqlType::Max), "c.computed")
        .Add(Bit("uses_database_collation", false), "1")
        .Add(Bit("is_persisted", false), "c.is_persisted")
        .Add(Bit("is_computed", false), "1");
    AddKinds(view);
    return view.From("FROM $q_columns c WHERE c.computed IS NOT NULL");
}

// The three values are sql_variant elsewhere; an identity value is at most a
// bigint here.
SystemView IdentityColumns() {
    ViewBuilder view(Schema, "identity_columns");
    AddType(view);
    view.Add(Bit("is_identity", false), "1");
    AddRoles(view);
    view.Add(BigInt("seed_value"), "i.seed")
        .Add(BigInt("increment_value"), "i.increment")
        .Add(BigInt("last_value"), "i.last")
        .Add(Bit("is_not_for_replication"), "0")
        .Add(Bit("is_computed", false), "0");
    AddKinds(view);
    return view.From(
        "FROM $q_identity i JOIN $q_columns c ON c.object_id = i.object_id"
        " AND c.column_id = i.column_id");
}

}  // namespace

SystemView ColumnsOver(const char* name, const std::string& rows) {
    ViewBuilder view(Schema, name);
    AddType(view);
    view.Add(Bit("is_identity", false), IsIdentity)
        .Add(Bit("is_computed", false), "c.computed IS NOT NULL");
    AddRoles(view);
    AddKinds(view);
    return view.From("FROM " + rows + " c");
}

std::vector<SystemView> ColumnViews() {
    return {ColumnsOver("columns", "$q_columns"), ComputedColumns(), IdentityColumns()};
}

}  // namespace quarv::localdb::catalog
