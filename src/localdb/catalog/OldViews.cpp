// sysobjects, syscolumns, sysindexes and systypes: the catalogue as older programs know it.
#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/ObjectColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/Collation.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

constexpr const char* Schema = "sys";

SystemView OldObjects() {
    ViewBuilder view(Schema, "sysobjects");
    view.Add(Sysname("name", false), "o.name")
        .Add(Int("id", false), "o.object_id")
        .Add(Char("xtype", 2, false), ObjectType)
        .Add(SmallInt("uid"), "o.schema_id")
        .Add(SmallInt("info"), "0")
        .Add(Int("status"), "0")
        .Add(Int("base_schema_ver"), "0")
        .Add(Int("replinfo"), "0")
        .Add(Int("parent_obj", false), "o.parent_id")
        .Add(DateTime("crdate", false), "o.created")
        .Add(SmallInt("ftcatid"), "0")
        .Add(Int("schema_ver"), "0")
        .Add(Int("stats_schema_ver"), "0")
        .Add(Char("type", 2),
             "CASE WHEN o.type IN ('PK', 'UQ') THEN 'K ' ELSE " + std::string(ObjectType) + " END")
        .Add(SmallInt("userstat"), "o.type = 'U'")
        .Add(SmallInt("sysstat"),
             "CASE o.type WHEN 'U' THEN 3 WHEN 'V' THEN 2 WHEN 'P' THEN 4"
             " ELSE 0 END")
        .Add(SmallInt("indexdel"), "0")
        .Add(DateTime("refdate", false), "o.created")
        .Add(Int("version"), "0");
    for (const char* name : {"deltrig", "instrig", "updtrig", "seltrig", "category"}) {
        view.Add(Int(name), "0");
    }
    view.Add(SmallInt("cache"), "0");
    return view.From("FROM $q_objects o");
}

// Columns of tables and views, and parameters of procedures behind them.
constexpr const char* ColumnRows =
    "FROM (SELECT object_id, name, column_id AS number, type, nullable, default_id,"
    " 0 AS parameter, 0 AS output, computed, CASE WHEN user_type <> 0 THEN user_type"
    " WHEN is_sysname THEN 256 ELSE q_type_number(type) END AS user_type FROM $q_columns"
    " UNION ALL SELECT object_id, name, parameter_id, type, 1, 0, 1, is_output, NULL,"
    " CASE user_type WHEN 0 THEN q_type_number(type) ELSE user_type END FROM $q_parameters) c";

// Digits of numbers, else the length in characters.
constexpr const char* OldPrecision =
    "coalesce(q_precision(c.type), q_char_length(c.type), q_byte_length(c.type))";

SystemView OldColumns() {
    ViewBuilder view(Schema, "syscolumns");
    const char* identity =
        "EXISTS (SELECT 1 FROM $q_identity i WHERE i.object_id = c.object_id"
        " AND i.column_id = c.number AND c.parameter = 0)";
    view.Add(Sysname("name"), "c.name")
        .Add(Int("id", false), "c.object_id")
        .Add(TinyInt("xtype", false), "q_type_number(c.type)")
        .Add(TinyInt("typestat", false), "0")
        .Add(SmallInt("xusertype"), "c.user_type")
        .Add(SmallInt("length", false), "q_byte_length(c.type)")
        .Add(TinyInt("xprec", false), "coalesce(q_precision(c.type), 0)")
        .Add(TinyInt("xscale", false), "coalesce(q_scale(c.type), q_moment_scale(c.type), 0)")
        .Add(SmallInt("colid"), "c.number")
        .Add(SmallInt("xoffset", false), "0")
        .Add(TinyInt("bitpos"), "0")
        .Add(TinyInt("reserved"), "0")
        .Add(SmallInt("colstat"), identity)
        .Add(Int("cdefault", false), "c.default_id")
        .Add(Int("domain", false), "0")
        .Add(SmallInt("number"), "0")
        .Add(SmallInt("colorder"), "c.number")
        .AddNulls({VarBinary("autoval", 8000)})
        .Add(SmallInt("offset"), "0")
        .Add(Int("collationid"),
             "CASE WHEN q_char_length(c.type) IS NULL THEN 0 ELSE 872468488 END")
        .Add(Int("language"), "0")
        .Add(TinyInt("status"), "c.nullable * 8 + c.output * 64 + 128 * " + std::string(identity))
        .Add(TinyInt("type"), OldWireNumber("q_type_number(c.type)"))
        .Add(SmallInt("usertype"), OldTypeNumber("q_type_number(c.type)", "c.user_type"))
        .AddNulls({VarChar("printfmt", 255)})
        .Add(SmallInt("prec"), OldPrecision)
        .Add(Int("scale"), "q_scale(c.type)")
        .Add(Int("iscomputed"), "c.computed IS NOT NULL")
        .Add(Int("isoutparam"), "c.output")
        .Add(Int("isnullable"), "c.nullable")
        .Add(Sysname("collation"), CollationOfType())
        .Add(Binary("tdscollation", 5),
             "CASE WHEN " + CollationOfType() + " IS NOT NULL THEN x'0904D00034' END");
    return view.From(ColumnRows);
}

// The rows of the table behind the index, counted where they are asked for.
constexpr const char* RowsOf = "q_row_count('$t' || i.object_id)";

// Bit 2 of the status is a unique index, 16 a clustered one, 2048 a primary key, 4096 a UNIQUE.
SystemView OldIndexes() {
    ViewBuilder view(Schema, "sysindexes");
    view.Add(Int("id", false), "i.object_id")
        .Add(Int("status"),
             "i.is_unique * 2 + (i.kind = 1) * 16 + coalesce(p.type = 'PK', 0) * 2048"
             " + coalesce(p.type = 'UQ', 0) * 4096")
        .AddNulls({Binary("first", 6)})
        .Add(SmallInt("indid"), "i.index_id")
        .AddNulls({Binary("root", 6)})
        .Add(SmallInt("minlen"), "0")
        .Add(SmallInt("keycnt"),
             "(SELECT count(*) FROM $q_index_columns k WHERE k.object_id = i.object_id"
             " AND k.index_id = i.index_id)")
        .Add(SmallInt("groupid"), "1");
    for (const char* name : {"dpages", "reserved", "used"}) view.Add(Int(name), "0");
    view.Add(BigInt("rowcnt"), RowsOf)
        .Add(Int("rowmodctr"), "0")
        .Add(TinyInt("reserved3"), "0")
        .Add(TinyInt("reserved4"), "0")
        .Add(SmallInt("xmaxlen"), "0")
        .Add(SmallInt("maxirow"), "0")
        .Add(TinyInt("OrigFillFactor"), "0")
        .Add(TinyInt("StatVersion"), "0")
        .Add(Int("reserved2"), "0")
        .AddNulls({Binary("FirstIAM", 6)})
        .Add(SmallInt("impid"), "0")
        .Add(SmallInt("lockflags"), "0")
        .Add(Int("pgmodctr"), "0")
        .AddNulls({VarBinary("keys", 816)})
        .Add(Sysname("name"), "i.name")
        .AddNulls({Image("statblob")})
        .Add(Int("maxlen"), "8000")
        .Add(Int("rows"), "min(" + std::string(RowsOf) + ", 2147483647)");
    return view.From(
        "FROM (SELECT object_id, name, index_id, is_unique, constraint_id,"
        " CASE is_clustered WHEN 0 THEN 2 ELSE 1 END AS kind FROM $q_indexes"
        " UNION ALL SELECT object_id, NULL, 0, 0, 0, 0 FROM $q_objects t WHERE t.type = 'U'"
        " AND NOT EXISTS (SELECT 1 FROM $q_indexes x WHERE x.object_id = t.object_id"
        " AND x.is_clustered)) i LEFT JOIN $q_objects p ON p.object_id = i.constraint_id");
}

}  // namespace

std::vector<SystemView> OldViews() {
    return {OldObjects(), OldColumns(), OldIndexes()};
}

}  // namespace quarv::localdb::catalog
