#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/HelpConstraints.h"
#include "localdb/catalog/HelpIndex.h"
#include "localdb/catalog/HelpObject.h"
#include "localdb/catalog/HelpText.h"
#include "localdb/catalog/HelpType.h"
#include "localdb/catalog/ObjectLookup.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

namespace {

using engine::SystemCall;

constexpr int MaxObjectName = 776;

void HelpTableOrView(SystemCall& call, const engine::ObjectInfo& object, const QString& name) {
    engine::TableInfo table = call.GetMetadata().LoadTable(object);
    call.GetMetadata().LoadConstraints(table);
    const bool stored = object.type == u"U";
    HelpColumns(call, table);
    HelpIdentity(call, table);
    HelpRowGuid(call, table);
    if (stored) HelpFilegroup(call);
    HelpIndex(call, table, name);
    if (!stored) return;
    HelpConstraints(call, table, name);
    HelpReferences(call, table, name);
    call.Say(15647, {name});
}

int RunHelp(SystemCall& call) {
    const QString name = call.Text(0);
    if (name.isEmpty()) {
        HelpAllObjects(call);
        HelpAllTypes(call);
        return 0;
    }
    if (!LookUpObject(call, name) && HelpType(call, name)) return 0;
    const engine::ObjectInfo object = FindObject(call, name);
    HelpHead(call, object);
    if (object.type == u"U" || object.type == u"V") HelpTableOrView(call, object, name);
    if (object.type == u"P") HelpParameters(call, object);
    return 0;
}

int RunHelpIndex(SystemCall& call) {
    const QString name = call.Text(0);
    const engine::ObjectInfo object = FindObject(call, name);
    HelpIndex(call, call.GetMetadata().LoadTable(object), name);
    return 0;
}

// Anything but "nomsg" has the object named first.
int RunHelpConstraint(SystemCall& call) {
    const QString name = call.Text(0);
    const engine::ObjectInfo object = FindObject(call, name);
    engine::TableInfo table = call.GetMetadata().LoadTable(object);
    call.GetMetadata().LoadConstraints(table);
    if (!engine::SameName(call.Text(1), QStringLiteral("nomsg"))) {
        call.Begin({NVarChar("Object Name", MaxObjectName)});
        call.Row({Value(name)});
        call.End();
    }
    HelpConstraints(call, table, name);
    HelpReferences(call, table, name);
    return 0;
}

// The source of the object, or of one of its computed columns.
QString SourceOf(SystemCall& call, const engine::ObjectInfo& object, const QString& name) {
    const QString column = call.Text(1);
    if (column.isEmpty()) return object.definition;
    if (object.type != u"U") throw engine::SqlError(15218, {name});
    const engine::TableInfo table = call.GetMetadata().LoadTable(object);
    const engine::ColumnInfo* found = table.FindColumn(column);
    if (!found) throw engine::SqlError(15645, {column});
    if (!found->IsComputed()) throw engine::SqlError(15646, {column});
    return found->computedText;
}

int RunHelpText(SystemCall& call) {
    const QString name = call.Text(0);
    const engine::ObjectInfo object = FindObject(call, name);
    const QString source = SourceOf(call, object, name);
    if (source.isEmpty()) throw engine::SqlError(15197, {name});
    call.Begin({NVarChar("Text", 255)});
    for (const QString& line : HelpTextLines(source)) call.Row({Value(line)});
    call.End();
    return 0;
}

}  // namespace

std::vector<engine::SystemProcedure> HelpProcedures() {
    const Column name = NVarChar("@objname", MaxObjectName);
    return {{QStringLiteral("sp_help"), {Optional(name)}, RunHelp},
            {QStringLiteral("sp_helpconstraint"),
             {Required(name), Optional(VarChar("@nomsg", 5))},
             RunHelpConstraint},
            {QStringLiteral("sp_helpindex"), {Required(name)}, RunHelpIndex},
            {QStringLiteral("sp_helptext"),
             {Required(name), Optional(Sysname("@columnname"))},
             RunHelpText}};
}

}  // namespace quarv::localdb::catalog
