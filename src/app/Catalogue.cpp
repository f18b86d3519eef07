#include "app/Catalogue.h"

#include <QStringBuilder>

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

void ReadRoot(SQLServerConnection& connection, const AddCatalogueNode& add) {
    const ado::RecordsetPtr info = connection.OpenQuery(QStringLiteral("exec sp_server_info 2"));
    const QString version = (*info)[QStringLiteral("attribute_value")].ToText();
    add({}, RootKey, connection.Description() + u' ' + version, DatabaseIcon);
    add(RootKey, TablesKey, QStringLiteral("Tables"), TablesIcon);
    add(RootKey, RoutinesKey, QStringLiteral("Routines"), RoutinesIcon);
}

void ReadTables(SQLServerConnection& connection, const AddCatalogueNode& add) {
    const ado::RecordsetPtr tables = connection.GetTableList();
    const ado::Field& type = tables->Fields()[QStringLiteral("table_type")];
    const ado::Field& name = tables->Fields()[QStringLiteral("table_name")];
    for (; !tables->EOF(); tables->MoveNext()) {
        if (IsSystemTable(type.Value())) continue;
        const QString text = TextOf(name.Value());
        add(TablesKey, TablePrefix % text, text, TableIcon);
    }
}

void ReadProcedures(SQLServerConnection& connection, const AddCatalogueNode& add) {
    const ado::RecordsetPtr procedures = connection.GetSprocList();
    const ado::Field& name = procedures->Fields()[QStringLiteral("PROCEDURE_NAME")];
    for (; !procedures->EOF(); procedures->MoveNext()) {
        const QString text = WithoutVersion(TextOf(name.Value()));
        add(RoutinesKey, ProcedurePrefix % text, text, ProcedureIcon);
    }
}

bool IsTableKey(const QString& key) {
    return TextStartsWith(key, TablePrefix);
}

bool IsProcedureKey(const QString& key) {
    return TextStartsWith(key, ProcedurePrefix);
}

}  // namespace quarv
