#include "app/Catalogue.h"

#include "base/RUtils.h"
#include "db/SQLServerConnection.h"

namespace quarv {
namespace {

const QString RootKey = QStringLiteral("_db_");
const QString TablesKey = QStringLiteral("Tables");
const QString RoutinesKey = QStringLiteral("Routines");
const QString TablePrefix = QStringLiteral("_tbl_");
const QString ProcedurePrefix = QStringLiteral("_sp_");

// The text of a field; most are texts already, which spares the conversion's locale.
QString TextOf(const Value& value) {
    return value.kind() == Value::Kind::Text ? value.Text() : value.ToText();
}

bool IsSystemTable(const Value& type) {
    return !type.IsNull() && SameText(TextOf(type), QStringLiteral("SYSTEM TABLE"));
}

// The provider puts a version behind a procedure's name, as in "MyProc;1".
QString WithoutVersion(const QString& name) {
    const auto at = name.indexOf(u';');
    return at < 0 ? name : name.left(at);
}

}  // namespace

std::vector<CatalogueNode> ReadRoot(SQLServerConnection& connection) {
    const ado::RecordsetPtr info = connection.OpenQuery(QStringLiteral("exec sp_server_info 2"));
    const QString version = (*info)[QStringLiteral("attribute_value")].ToText();
    return {{{}, RootKey, connection.Description() + u' ' + version, DatabaseIcon},
            {RootKey, TablesKey, QStringLiteral("Tables"), TablesIcon},
            {RootKey, RoutinesKey, QStringLiteral("Routines"), RoutinesIcon}};
}

CatalogueGroup ReadTables(SQLServerConnection& connection) {
    CatalogueGroup group{TablesKey, TablePrefix, TableIcon, {}};
    const ado::RecordsetPtr tables = connection.GetTableList();
    const ado::Field& type = tables->Fields()[QStringLiteral("table_type")];
    const ado::Field& name = tables->Fields()[QStringLiteral("table_name")];
    for (; !tables->EOF(); tables->MoveNext())
        if (!IsSystemTable(type.Value())) group.names.push_back(TextOf(name.Value()));
    return group;
}

CatalogueGroup ReadProcedures(SQLServerConnection& connection) {
    CatalogueGroup group{RoutinesKey, ProcedurePrefix, ProcedureIcon, {}};
    const ado::RecordsetPtr procedures = connection.GetSprocList();
    const ado::Field& name = procedures->Fields()[QStringLiteral("PROCEDURE_NAME")];
    for (; !procedures->EOF(); procedures->MoveNext())
        group.names.push_back(WithoutVersion(TextOf(name.Value())));
    return group;
}

bool IsTableKey(const QString& key) {
    return TextStartsWith(key, TablePrefix);
}

bool IsProcedureKey(const QString& key) {
    return TextStartsWith(key, ProcedurePrefix);
}

}  // namespace quarv
