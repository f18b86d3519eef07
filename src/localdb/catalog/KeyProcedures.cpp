#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/NameFilter.h"
#include "localdb/catalog/ObjectLookup.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

namespace {

using engine::SystemCall;

enum Argument : size_t { Name, Owner, Qualifier, IndexName, OnlyUnique, Accuracy };

constexpr const char* Keys =
    " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
    " JOIN $q_indexes i ON i.object_id = o.object_id"
    " JOIN $q_index_columns k ON k.object_id = i.object_id AND k.index_id = i.index_id"
    " JOIN $q_columns c ON c.object_id = k.object_id AND c.column_id = k.column_id";

NameFilter TableFilter(const SystemCall& call) {
    NameFilter filter;
    filter.AddExact("o.name", call.Text(Name));
    filter.AddExact("s.name", call.Text(Owner));
    return filter;
}

int RunPrimaryKeys(SystemCall& call) {
    CheckQualifier(call, Qualifier);
    const NameFilter filter = TableFilter(call);
    call.Query({Sysname("TABLE_QUALIFIER"), Sysname("TABLE_OWNER"), Sysname("TABLE_NAME", false),
                Sysname("COLUMN_NAME", false), SmallInt("KEY_SEQ", false), Sysname("PK_NAME")},
               "SELECT :db, s.name, o.name, c.name, k.key_no, i.name" + std::string(Keys) +
                   " JOIN $q_objects p ON p.object_id = i.constraint_id AND p.type = 'PK'"
                   " WHERE +o.type = 'U'" +
                   filter.Conditions() + " ORDER BY s.name, o.name, k.key_no",
               filter.Parameters());
    return 0;
}

std::vector<Column> StatisticsColumns() {
    return {Sysname("TABLE_QUALIFIER"),
            Sysname("TABLE_OWNER"),
            Sysname("TABLE_NAME", false),
            SmallInt("NON_UNIQUE"),
            Sysname("INDEX_QUALIFIER"),
            Sysname("INDEX_NAME"),
            SmallInt("TYPE", false),
            SmallInt("SEQ_IN_INDEX"),
            Sysname("COLUMN_NAME"),
            Char("COLLATION", 1),
            Int("CARDINALITY"),
            Int("PAGES"),
            VarChar("FILTER_CONDITION", 128)};
}

// Rows are counted only where the caller asks for exactness: the storage has to walk them all.
std::string Cardinality(const SystemCall& call, const engine::ObjectInfo& table) {
    const bool exact = engine::SameName(call.Text(Accuracy), QStringLiteral("E"));
    if (!exact || table.type != u"U") return "NULL";
    return "(SELECT min(count(*), 2147483647) FROM $t" + std::to_string(table.id) + ')';
}

// The table itself, as type 0.
void AppendTableRow(SystemCall& call, const std::string& count) {
    const NameFilter filter = TableFilter(call);
    call.Append(call.Database(),
                "SELECT :db, s.name, o.name, NULL, NULL, NULL, 0, NULL, NULL, NULL, " + count +
                    ", NULL, NULL FROM $q_objects o"
                    " JOIN $q_schemas s ON s.schema_id = o.schema_id WHERE 1" +
                    filter.Conditions(),
                filter.Parameters());
}

void AppendIndexRows(SystemCall& call, const std::string& count) {
    NameFilter filter = TableFilter(call);
    filter.Add("i.name", call.Text(IndexName));
    const bool onlyUnique = engine::SameName(call.Text(OnlyUnique), QStringLiteral("Y"));
    call.Append(call.Database(),
                "SELECT :db, s.name, o.name, 1 - i.is_unique, o.name, i.name,"
                " CASE i.is_clustered WHEN 0 THEN 3 ELSE 1 END, k.key_no, c.name,"
                " CASE k.descending WHEN 0 THEN 'A' ELSE 'D' END, " +
                    count + ", NULL, NULL" + Keys + " WHERE 1" + filter.Conditions() +
                    (onlyUnique ? " AND i.is_unique" : "") + " ORDER BY 4, 7, i.name, 8",
                filter.Parameters());
}

int RunStatistics(SystemCall& call) {
    CheckQualifier(call, Qualifier);
    call.Begin(StatisticsColumns());
    const std::optional<engine::ObjectInfo> table =
        FindTable(call, call.Text(Name), call.Text(Owner));
    if (table) {
        const std::string count = Cardinality(call, *table);
        AppendTableRow(call, count);
        AppendIndexRows(call, count);
    }
    call.End();
    return 0;
}

}  // namespace

std::vector<engine::SystemProcedure> KeyProcedures() {
    const engine::SystemParameter name = Required(Sysname("@table_name"));
    const engine::SystemParameter owner = Optional(Sysname("@table_owner"));
    const engine::SystemParameter qualifier = Optional(Sysname("@table_qualifier"));
    return {{QStringLiteral("sp_pkeys"), {name, owner, qualifier}, RunPrimaryKeys},
            {QStringLiteral("sp_statistics"),
             {name, owner, qualifier, Optional(NVarChar("@index_name", 128)),
              Optional(Char("@is_unique", 1)), Optional(Char("@accuracy", 1))},
             RunStatistics}};
}

}  // namespace quarv::localdb::catalog
