#include <algorithm>
#include <iterator>

#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/NameFilter.h"
#include "localdb/catalog/ObjectLookup.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/Collation.h"
#include "localdb/engine/SystemCall.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::catalog {

namespace {

using engine::DatabaseEntry;
using engine::SystemCall;

enum Argument : size_t { Name, Owner, Qualifier, Type, UsePattern };

const QString TableType = QStringLiteral("TABLE");
const QString ViewType = QStringLiteral("VIEW");
const QString SystemTableType = QStringLiteral("SYSTEM TABLE");

// Schema by schema, so that the index over type, schema and name gives them in order.
constexpr const char* ObjectsOfType =
    "SELECT :db, s.name, o.name, CASE o.type WHEN 'U' THEN 'TABLE' ELSE 'VIEW' END, NULL"
    " FROM $q_objects o CROSS JOIN $q_schemas s ON s.schema_id = o.schema_id"
    " WHERE o.type = ";
constexpr const char* InOrder = " ORDER BY o.name";

std::vector<Column> TableColumns() {
    return {Sysname("TABLE_QUALIFIER"), Sysname("TABLE_OWNER"), Sysname("TABLE_NAME"),
            VarChar("TABLE_TYPE", 32), VarChar("REMARKS", 254)};
}

// "'TABLE','VIEW'" as its words; quotes are customary, not needed.
QStringList ReadTypes(const QString& text) {
    QStringList types;
    for (QString type : text.split(u',')) {
        type.remove(u'\'');
        types += type.trimmed();
    }
    return types;
}

bool AsksFor(const SystemCall& call, const QString& type) {
    const QString text = call.Text(Type);
    if (text.isEmpty() || text == u"%") return true;
    return ReadTypes(text).contains(type, Qt::CaseInsensitive);
}

void AppendObjects(SystemCall& call, const DatabaseEntry& database, const char* type, int schema) {
    NameFilter filter(call.IsNull(UsePattern) || call.Integer(UsePattern) != 0);
    filter.Add("o.name", call.Text(Name));
    filter.Add("s.name", call.Text(Owner));
    call.Append(database,
                ObjectsOfType + ('\'' + std::string(type)) +
                    "' AND o.schema_id = " + std::to_string(schema) + filter.Conditions() + InOrder,
                filter.Parameters());
}

void AppendTables(SystemCall& call, const DatabaseEntry& database) {
    for (const int schema : call.GetMetadata(database).SchemasWith(QStringLiteral("U"))) {
        AppendObjects(call, database, "U", schema);
    }
}

void AppendSystemView(SystemCall& call, const DatabaseEntry& database,
                      const engine::SystemView& view) {
    if (!NameFilter::Matches(view.name, call.Text(Name))) return;
    if (!NameFilter::Matches(view.schema, call.Text(Owner))) return;
    call.Row({Value(database.name), Value(view.schema), Value(view.name), Value(ViewType), Null()});
}

bool GoesBefore(const QString& a, const QString& b) {
    return engine::Collation::Compare(engine::ToUtf8(a), engine::ToUtf8(b)) < 0;
}

// The system's schemas stand among the user's in the order of names.
void AppendViews(SystemCall& call, const DatabaseEntry& database) {
    const std::vector<engine::SystemView>& views = call.Objects().Views();
    auto next = views.begin();
    engine::Metadata metadata = call.GetMetadata(database);
    for (const int schema : metadata.SchemasWith(QStringLiteral("V"))) {
        const QString name = metadata.SchemaName(schema);
        for (; next != views.end() && GoesBefore(next->schema, name); ++next) {
            AppendSystemView(call, database, *next);
        }
        AppendObjects(call, database, "V", schema);
    }
    for (; next != views.end(); ++next) AppendSystemView(call, database, *next);
}

int ListTables(SystemCall& call, const std::vector<DatabaseEntry>& databases) {
    call.Begin(TableColumns());
    if (AsksFor(call, TableType)) {
        for (const DatabaseEntry& database : databases) AppendTables(call, database);
    }
    if (AsksFor(call, ViewType)) {
        for (const DatabaseEntry& database : databases) AppendViews(call, database);
    }
    call.End();
    return 0;
}

// The three lists of their own: "%" in one place and empty texts elsewhere ask for the databases,
// the owners or the types ("SQLTables Function").
bool IsGivenEmpty(const SystemCall& call, size_t argument) {
    return !call.IsNull(argument) && call.Text(argument).isEmpty();
}

bool ListDatabases(SystemCall& call) {
    if (call.Text(Qualifier) != u"%" || !call.Text(Name).isEmpty() || !call.Text(Owner).isEmpty())
        return false;
    call.Begin(TableColumns());
    for (const DatabaseEntry& database : call.Databases().All()) {
        call.Row({Value(database.name), Null(), Null(), Null(), Null()});
    }
    call.End();
    return true;
}

bool ListOwners(SystemCall& call) {
    if (call.Text(Owner) != u"%" || !IsGivenEmpty(call, Name) || !IsGivenEmpty(call, Qualifier))
        return false;
    call.Query(TableColumns(), "SELECT NULL, name, NULL, NULL, NULL FROM $q_schemas ORDER BY name",
               {});
    return true;
}

bool ListTypes(SystemCall& call) {
    if (call.Text(Type) != u"%" || !IsGivenEmpty(call, Name) || !IsGivenEmpty(call, Owner) ||
        !IsGivenEmpty(call, Qualifier))
        return false;
    call.Begin(TableColumns());
    for (const QString& type : {SystemTableType, TableType, ViewType}) {
        call.Row({Null(), Null(), Null(), Value(type), Null()});
    }
    call.End();
    return true;
}

int RunTables(SystemCall& call) {
    if (ListDatabases(call) || ListOwners(call) || ListTypes(call)) return 0;
    CheckQualifier(call, Qualifier);
    return ListTables(call, {call.Database()});
}

// As sp_tables, but the qualifier is a pattern too and may ask for several databases.
int RunTablesByPattern(SystemCall& call) {
    if (ListDatabases(call) || ListOwners(call) || ListTypes(call)) return 0;
    const QString qualifier = call.Text(Qualifier);
    if (qualifier.isEmpty()) return ListTables(call, {call.Database()});
    const std::vector<DatabaseEntry> all = call.Databases().All();
    std::vector<DatabaseEntry> asked;
    std::copy_if(all.begin(), all.end(), std::back_inserter(asked), [&](const auto& database) {
        return NameFilter::Matches(database.name, qualifier);
    });
    return ListTables(call, asked);
}

}  // namespace

std::vector<engine::SystemProcedure> TablesProcedures() {
    const std::vector<engine::SystemParameter> parameters = {
        Optional(NVarChar("@table_name", 384)), Optional(NVarChar("@table_owner", 384)),
        Optional(NVarChar("@table_qualifier", 384)), Optional(VarChar("@table_type", 100)),
        Optional(Bit("@fUsePattern"))};
    return {{QStringLiteral("sp_tables"), parameters, RunTables},
            {QStringLiteral("sp_tableswc"), parameters, RunTablesByPattern}};
}

}  // namespace quarv::localdb::catalog
