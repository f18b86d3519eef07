#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/LikeMatcher.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SystemCall.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::catalog {

using engine::SystemCall;
using engine::SystemProcedure;

namespace {

enum TablesArgument : size_t { Name, Owner, Qualifier, Type, UsePattern };

std::vector<Column> TablesColumns() {
    return {Sysname("TABLE_QUALIFIER"), Sysname("TABLE_OWNER"), Sysname("TABLE_NAME"),
            VarChar("TABLE_TYPE", 32), VarChar("REMARKS", 254)};
}

std::string Literal(const QString& text) {
    return '\'' + engine::ToUtf8(QString(text).replace(QStringLiteral("'"), QStringLiteral("''"))) +
           '\'';
}

// The views that every database has, as rows of the list.
std::string SystemViewRows(const SystemCall& call) {
    std::string rows;
    for (const engine::SystemView& view : call.Objects().Views()) {
        rows +=
            " UNION ALL SELECT " + Literal(view.schema) + ", " + Literal(view.name) + ", 'VIEW'";
    }
    return rows;
}

// What the list of types allows: "'TABLE','VIEW'", the quotes doubled or not there at all.
bool Allows(const QString& types, QStringView type) {
    if (types.isEmpty() || types == u"%") return true;
    for (QString part : types.split(u',')) {
        part = part.trimmed();
        while (part.startsWith(u'\'')) part.remove(0, 1);
        while (part.endsWith(u'\'')) part.chop(1);
        if (part.trimmed().compare(type, Qt::CaseInsensitive) == 0) return true;
    }
    return false;
}

std::string TablesSql(const SystemCall& call, const QString& types, bool pattern) {
    const char* match = pattern ? "q_like(%, ?)" : "% = ? COLLATE tsql";
    const auto matches = [match](const char* column, const char* parameter) {
        std::string text = match;
        text.replace(text.find('%'), 1, column);
        text.replace(text.find('?'), 1, parameter);
        return text;
    };
    std::string sql =
        "SELECT :db, owner, name, type, NULL FROM (SELECT s.name AS owner, o.name AS name,"
        " CASE o.type WHEN 'U' THEN 'TABLE' ELSE 'VIEW' END AS type"
        " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
        " WHERE o.type IN ('U', 'V')" +
        SystemViewRows(call) + ") WHERE (?1 IS NULL OR " + matches("name", "?1") +
        ") AND (?2 IS NULL OR " + matches("owner", "?2") + ")";
    if (!Allows(types, u"TABLE")) sql += " AND type <> 'TABLE'";
    if (!Allows(types, u"VIEW")) sql += " AND type <> 'VIEW'";
    return sql + " ORDER BY type, owner, name";
}

void AppendDatabases(SystemCall& call) {
    for (const engine::DatabaseEntry& entry : call.Databases().All()) {
        call.Row({Value(entry.name), Null(), Null(), Null(), Null()});
    }
}

// The special calls: one argument is "%" and the others are empty.
bool TryLists(SystemCall& call) {
    const auto empty = [&call](size_t argument) { return call.Text(argument).isEmpty(); };
    const auto all = [&call](size_t argument) { return call.Text(argument) == u"%"; };
    if (all(Qualifier) && empty(Name) && empty(Owner) && !call.IsNull(Name)) {
        call.Begin(TablesColumns());
        AppendDatabases(call);
    } else if (all(Owner) && empty(Name) && empty(Qualifier) && !call.IsNull(Name)) {
        call.Begin(TablesColumns());
        call.Append(call.Database(),
                    "SELECT NULL, name, NULL, NULL, NULL FROM $q_schemas ORDER BY name", {});
    } else if (all(Type) && empty(Name) && empty(Owner) && empty(Qualifier) && !call.IsNull(Name)) {
        call.Begin(TablesColumns());
        for (const char* type : {"SYSTEM TABLE", "TABLE", "VIEW"}) {
            call.Row({Null(), Null(), Null(), Value(QString::fromLatin1(type)), Null()});
        }
    } else {
        return false;
    }
    call.End();
    return true;
}

int Tables(SystemCall& call) {
    if (TryLists(call)) return 0;
    const QString qualifier = call.Text(Qualifier);
    if (!qualifier.isEmpty() && !engine::SameName(qualifier, call.Database().name)) {
        throw engine::SqlError(15250);
    }
    const bool pattern = call.IsNull(UsePattern) || call.Integer(UsePattern) != 0;
    call.Query(TablesColumns(), TablesSql(call, call.Text(Type), pattern),
               {{1, call.Text(Name)}, {2, call.Text(Owner)}});
    return 0;
}

// The same over every database whose name matches.
int TablesWithWildcard(SystemCall& call) {
    if (TryLists(call)) return 0;
    const std::string pattern = engine::ToUtf8(call.Text(Qualifier));
    call.Begin(TablesColumns());
    for (const engine::DatabaseEntry& entry : call.Databases().All()) {
        const bool matches = call.Text(Qualifier).isEmpty()
                                 ? entry.id == call.Database().id
                                 : engine::MatchesLike(engine::ToUtf8(entry.name), pattern);
        if (!matches) continue;
        call.Append(entry, TablesSql(call, call.Text(Type), true),
                    {{1, call.Text(Name)}, {2, call.Text(Owner)}});
    }
    call.End();
    return 0;
}

int StoredProcedures(SystemCall& call) {
    enum : size_t { SpName, SpOwner, SpQualifier, SpUsePattern };
    const QString qualifier = call.Text(SpQualifier);
    if (!qualifier.isEmpty() && !engine::SameName(qualifier, call.Database().name)) {
        throw engine::SqlError(15250);
    }
    const bool pattern = call.IsNull(SpUsePattern) || call.Integer(SpUsePattern) != 0;
    const std::string name = pattern ? "q_like(o.name, ?1)" : "o.name = ?1 COLLATE tsql";
    const std::string owner = pattern ? "q_like(s.name, ?2)" : "s.name = ?2 COLLATE tsql";
    call.Query(
        {Sysname("PROCEDURE_QUALIFIER"), Sysname("PROCEDURE_OWNER"),
         NVarChar("PROCEDURE_NAME", 134, false), Int("NUM_INPUT_PARAMS"), Int("NUM_OUTPUT_PARAMS"),
         Int("NUM_RESULT_SETS"), VarChar("REMARKS", 254), SmallInt("PROCEDURE_TYPE")},
        "SELECT :db, s.name, o.name || ';1', -1, -1, -1, NULL, 2"
        " FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
        " WHERE o.type = 'P' AND (?1 IS NULL OR " +
            name + ") AND (?2 IS NULL OR " + owner + ") ORDER BY s.name, o.name",
        {{1, call.Text(SpName)}, {2, call.Text(SpOwner)}});
    return 0;
}

std::vector<engine::SystemParameter> TablesParameters() {
    const engine::SqlType name = engine::MakeType(engine::TypeKind::NVarChar, 384);
    return {{QStringLiteral("@table_name"), name},
            {QStringLiteral("@table_owner"), name},
            {QStringLiteral("@table_qualifier"), engine::SysnameType()},
            {QStringLiteral("@table_type"), engine::MakeType(engine::TypeKind::VarChar, 100)},
            {QStringLiteral("@fUsePattern"), engine::BitType()}};
}

}  // namespace

std::vector<SystemProcedure> TablesProcedures() {
    const engine::SqlType name = engine::MakeType(engine::TypeKind::NVarChar, 390);
    return {
        {QStringLiteral("sp_tables"), TablesParameters(), Tables},
        {QStringLiteral("sp_tableswc"), TablesParameters(), TablesWithWildcard},
        {QStringLiteral("sp_stored_procedures"),
         {{QStringLiteral("@sp_name"), name},
          {QStringLiteral("@sp_owner"), engine::MakeType(engine::TypeKind::NVarChar, 384)},
          {QStringLiteral("@sp_qualifier"), engine::SysnameType()},
          {QStringLiteral("@fUsePattern"), engine::BitType()}},
         StoredProcedures},
    };
}

}  // namespace quarv::localdb::catalog
