#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/catalog/ViewBuilder.h"
#include "localdb/engine/Collation.h"

namespace quarv::localdb::catalog {

namespace {

using engine::Collation;
using engine::SystemView;

constexpr const char* Schema = "sys";
constexpr int SysnameNumber = 256;

// The digits that the types have which are no numbers by these views' count.
constexpr const char* PrecisionOfType =
    "CASE q_type_number(c.type) WHEN 104 THEN 1"
    " ELSE coalesce(q_precision(c.type), q_moment_digits(c.type), 0) END";
constexpr const char* ScaleOfType = "coalesce(q_scale(c.type), q_moment_scale(c.type), 0)";

// An alias type's number where the column has one.
constexpr const char* UserType =
    "CASE WHEN c.user_type <> 0 THEN c.user_type WHEN c.is_sysname THEN 256"
    " ELSE q_type_number(c.type) END";

// What this server's columns are not: encrypted, hidden, parts of a graph or a ledger.
void AddColumnKinds(ViewBuilder& view) {
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

SystemView Columns() {
    return ColumnsOver("columns", "$q_columns");
}

}  // namespace

SystemView ColumnsOver(const char* name, const std::string& rows) {
    ViewBuilder view(Schema, name);
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
        .Add(Bit("is_rowguidcol", false), "c.is_rowguid")
        .Add(Bit("is_identity", false),
             "EXISTS (SELECT 1 FROM $q_identity i WHERE i.object_id = c.object_id"
             " AND i.column_id = c.column_id)");
    view.Add(Bit("is_computed", false), "c.computed IS NOT NULL");
    for (const char* bit : {"is_filestream", "is_replicated", "is_non_sql_subscribed",
                            "is_merge_published", "is_dts_replicated", "is_xml_document"}) {
        view.Add(Bit(bit, false), "0");
    }
    view.Add(Int("xml_collection_id", false), "0")
        .Add(Int("default_object_id", false), "c.default_id")
        .Add(Int("rule_object_id", false), "0");
    AddColumnKinds(view);
    return view.From("FROM " + rows + " c");
}

namespace {

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

// The widest value of a kind, which sys.types shows.
engine::SqlType WidestOf(engine::TypeKind kind) {
    const engine::TypeFacts& facts = engine::FactsOf(kind);
    if (facts.cls == engine::TypeClass::Decimal) return engine::MakeType(kind, 0, 38, 38);
    return engine::MakeType(kind, 0, 0, engine::HasTimeScale(kind) ? 7 : 0);
}

// name, number, own number, length, precision, scale, collation and nullability of a kind.
std::string TypeRow(const QString& name, engine::TypeKind kind, int number) {
    const engine::SqlType type = WidestOf(kind);
    const engine::TypeFacts& facts = engine::FactsOf(kind);
    const bool xml = kind == engine::TypeKind::Xml, sysname = number == SysnameNumber;
    const bool text = facts.cls == engine::TypeClass::Text && !xml;
    const bool sized = facts.bytes == 0 && facts.cls != engine::TypeClass::Decimal;
    const int length = sysname ? 256 : xml ? -1 : sized ? 8000 : engine::ByteLength(type);
    const bool counted = facts.cls != engine::TypeClass::Text;
    const bool nullable = kind != engine::TypeKind::RowVersion && !sysname;
    return "('" + name.toStdString() + "', " + std::to_string(facts.number) + ", " +
           std::to_string(number) + ", 4, " + std::to_string(length) + ", " +
           std::to_string(counted ? engine::PrecisionOf(type) : 0) + ", " +
           std::to_string(counted ? engine::ScaleOf(type) : 0) + ", " +
           (text ? '\'' + std::string(Collation::Name) + '\'' : "NULL") + ", " +
           std::to_string(nullable) + ", 0)";
}

// One row for each type of the system, sysname and the alias types.
SystemView Types() {
    std::string rows;
    for (int kind = 0; kind <= static_cast<int>(engine::TypeKind::Xml); ++kind) {
        const engine::TypeFacts& facts = engine::FactsOf(static_cast<engine::TypeKind>(kind));
        rows += TypeRow(QString::fromUtf16(facts.name), facts.kind, facts.number) + ", ";
    }
    rows += TypeRow(QStringLiteral("sysname"), engine::TypeKind::NVarChar, SysnameNumber);
    ViewBuilder view(Schema, "types");
    view.Add(Sysname("name", false), "t.column1")
        .Add(TinyInt("system_type_id", false), "t.column2")
        .Add(Int("user_type_id", false), "t.column3")
        .Add(Int("schema_id", false), "t.column4")
        .AddNulls({Int("principal_id")})
        .Add(SmallInt("max_length", false), "t.column5")
        .Add(TinyInt("precision", false), "t.column6")
        .Add(TinyInt("scale", false), "t.column7")
        .Add(Sysname("collation_name"), "t.column8")
        .Add(Bit("is_nullable"), "t.column9")
        .Add(Bit("is_user_defined", false), "t.column10")
        .Add(Bit("is_assembly_type", false), "0")
        .Add(Int("default_object_id", false), "0")
        .Add(Int("rule_object_id", false), "0")
        .Add(Bit("is_table_type", false), "0");
    return view.From("FROM (SELECT * FROM (VALUES " + rows +
                     ") UNION ALL SELECT c.name, q_type_number(c.type), c.user_type, c.schema_id,"
                     " q_byte_length(c.type), " +
                     PrecisionOfType + ", " + ScaleOfType + ", " + CollationOfType() +
                     ", c.nullable, 1 FROM $q_types c) t");
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
    return {Columns(), Parameters(), Types(), Schemas(), Indexes(), IndexColumns(), SqlModules()};
}

}  // namespace quarv::localdb::catalog
