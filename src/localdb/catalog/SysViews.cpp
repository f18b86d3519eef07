#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/OdbcTypes.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/catalog/ViewBuilder.h"
#include "localdb/engine/Collation.h"

namespace quarv::localdb::catalog {

namespace {

using engine::Collation;
using engine::SystemView;

constexpr const char* Schema = "sys";

// The digits that the types have which are no numbers by these views' count.
constexpr const char* PrecisionOfType =
    "CASE q_type_number(c.type) WHEN 104 THEN 1 WHEN 40 THEN 10 WHEN 58 THEN 16 WHEN 61 THEN 23"
    " ELSE coalesce(q_precision(c.type), 0) END";
constexpr const char* ScaleOfType = "coalesce(q_scale(c.type), q_moment_scale(c.type), 0)";

SystemView Columns() {
    ViewBuilder view(Schema, "columns");
    view.Add(Int("object_id", false), "c.object_id")
        .Add(Sysname("name"), "c.name")
        .Add(Int("column_id", false), "c.column_id")
        .Add(TinyInt("system_type_id", false), "q_type_number(c.type)")
        .Add(Int("user_type_id", false),
             "CASE WHEN c.is_sysname THEN 256 ELSE q_type_number(c.type) END")
        .Add(SmallInt("max_length", false), "q_byte_length(c.type)")
        .Add(TinyInt("precision", false), PrecisionOfType)
        .Add(TinyInt("scale", false), ScaleOfType)
        .Add(Sysname("collation_name"), CollationOfType())
        .Add(Bit("is_nullable"), "c.nullable")
        .Add(Bit("is_ansi_padded", false), "q_char_length(c.type) IS NOT NULL")
        .Add(Bit("is_rowguidcol", false), "0")
        .Add(Bit("is_identity", false),
             "EXISTS (SELECT 1 FROM $q_identity i WHERE i.object_id = c.object_id"
             " AND i.column_id = c.column_id)");
    for (const char* name :
         {"is_computed", "is_filestream", "is_replicated", "is_non_sql_subscribed",
          "is_merge_published", "is_dts_replicated", "is_xml_document"}) {
        view.Add(Bit(name, false), "0");
    }
    view.Add(Int("xml_collection_id", false), "0")
        .Add(Int("default_object_id", false), "c.default_id")
        .Add(Int("rule_object_id", false), "0");
    return view.From("FROM $q_columns c");
}

SystemView Parameters() {
    ViewBuilder view(Schema, "parameters");
    view.Add(Int("object_id", false), "c.object_id")
        .Add(Sysname("name"), "c.name")
        .Add(Int("parameter_id", false), "c.parameter_id")
        .Add(TinyInt("system_type_id", false), "q_type_number(c.type)")
        .Add(Int("user_type_id", false), "q_type_number(c.type)")
        .Add(SmallInt("max_length", false), "q_byte_length(c.type)")
        .Add(TinyInt("precision", false), PrecisionOfType)
        .Add(TinyInt("scale", false), ScaleOfType)
        .Add(Bit("is_output", false), "c.is_output")
        .Add(Bit("is_cursor_ref", false), "0")
        // Known for CLR modules only; a T-SQL parameter's default is in its source.
        .Add(Bit("has_default_value", false), "0")
        .Add(Bit("is_xml_document", false), "0");
    return view.From("FROM $q_parameters c");
}

// One row for each type that can be stored, and sysname.
SystemView Types() {
    std::string rows;
    const auto add = [&rows](const QString& name, int number, int user, int length, int precision,
                             int scale, bool text) {
        if (!rows.empty()) rows += ", ";
        rows += "('" + name.toStdString() + "', " + std::to_string(number) + ", " +
                std::to_string(user) + ", " + std::to_string(length) + ", " +
                std::to_string(precision) + ", " + std::to_string(scale) + ", " +
                (text ? '\'' + std::string(Collation::Name) + '\'' : "NULL") + ')';
    };
    for (const OdbcType& type : OdbcTypes::All()) {
        const engine::TypeFacts& facts = engine::FactsOf(type.kind);
        const bool decimal = facts.cls == engine::TypeClass::Decimal;
        const bool text = facts.cls == engine::TypeClass::Text;
        add(QString::fromUtf16(facts.name), facts.number, facts.number,
            text      ? 8000
            : decimal ? 17
                      : facts.bytes,
            decimal ? 38 : facts.precision, decimal ? 38 : facts.scale, text);
    }
    const int nvarchar = engine::FactsOf(engine::TypeKind::NVarChar).number;
    add(QStringLiteral("sysname"), nvarchar, 256, 256, 0, 0, true);
    ViewBuilder view(Schema, "types");
    view.Add(Sysname("name", false), "t.column1")
        .Add(TinyInt("system_type_id", false), "t.column2")
        .Add(Int("user_type_id", false), "t.column3")
        .Add(Int("schema_id", false), "4")
        .AddNulls({Int("principal_id")})
        .Add(SmallInt("max_length", false), "t.column4")
        .Add(TinyInt("precision", false), "t.column5")
        .Add(TinyInt("scale", false), "t.column6")
        .Add(Sysname("collation_name"), "t.column7")
        .Add(Bit("is_nullable"), "t.column3 <> 256")
        .Add(Bit("is_user_defined", false), "0")
        .Add(Bit("is_assembly_type", false), "0")
        .Add(Int("default_object_id", false), "0")
        .Add(Int("rule_object_id", false), "0")
        .Add(Bit("is_table_type", false), "0");
    return view.From("FROM (VALUES " + rows + ") t");
}

SystemView Schemas() {
    ViewBuilder view(Schema, "schemas");
    view.Add(Sysname("name", false), "s.name")
        .Add(Int("schema_id", false), "s.schema_id")
        .Add(Int("principal_id"), "s.schema_id");
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
        .Add(Bit("has_filter"), "0")
        .AddNulls({NVarChar("filter_definition", engine::SqlType::Max)});
    return view.From(
        "FROM (SELECT object_id, name, index_id, is_unique, constraint_id,"
        " CASE is_clustered WHEN 0 THEN 2 ELSE 1 END AS kind FROM $q_indexes"
        " UNION ALL SELECT object_id, NULL, 0, 0, 0, 0 FROM $q_objects t WHERE t.type = 'U'"
        " AND NOT EXISTS (SELECT 1 FROM $q_indexes x WHERE x.object_id = t.object_id"
        " AND x.is_clustered)) i LEFT JOIN $q_objects p ON p.object_id = i.constraint_id");
}

SystemView IndexColumns() {
    ViewBuilder view(Schema, "index_columns");
    view.Add(Int("object_id", false), "k.object_id")
        .Add(Int("index_id", false), "k.index_id")
        .Add(Int("index_column_id", false), "k.key_no")
        .Add(Int("column_id", false), "k.column_id")
        .Add(TinyInt("key_ordinal", false), "k.key_no")
        .Add(TinyInt("partition_ordinal", false), "0")
        .Add(Bit("is_descending_key"), "k.descending")
        .Add(Bit("is_included_column"), "0");
    return view.From("FROM $q_index_columns k");
}

SystemView SqlModules() {
    ViewBuilder view(Schema, "sql_modules");
    view.Add(Int("object_id", false), "o.object_id")
        .Add(NVarChar("definition", engine::SqlType::Max), "o.definition")
        .Add(Bit("uses_ansi_nulls"), "1")
        .Add(Bit("uses_quoted_identifier"), "1")
        .Add(Bit("is_schema_bound"), "0")
        .Add(Bit("uses_database_collation"), "0")
        .Add(Bit("is_recompiled"), "0")
        .Add(Bit("null_on_null_input"), "0")
        .AddNulls({Int("execute_as_principal_id")});
    return view.From("FROM $q_objects o WHERE o.type IN ('V', 'P')");
}

}  // namespace

std::vector<SystemView> SysViews() {
    return {Columns(), Parameters(), Types(), Schemas(), Indexes(), IndexColumns(), SqlModules()};
}

}  // namespace quarv::localdb::catalog
