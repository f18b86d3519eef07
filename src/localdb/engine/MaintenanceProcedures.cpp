// The system's procedures that change the catalogue: sp_rename, sp_refreshview, sp_recompile.
#include "localdb/engine/Conversion.h"
#include "localdb/engine/ObjectRename.h"
#include "localdb/engine/ParseCache.h"
#include "localdb/engine/ProcedureCaller.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/engine/ViewColumns.h"

namespace quarv::localdb::engine {

// The texts of the arguments, a null QString where there is none.
std::vector<QString> ProcedureCaller::TextArguments(const std::vector<Parameter>& parameters,
                                                    const std::vector<CallArgument>& arguments,
                                                    const QString& procedure) {
    const std::vector<std::optional<size_t>> matched = Match(parameters, arguments, procedure);
    std::vector<QString> texts;
    for (size_t i = 0; i < parameters.size(); ++i) {
        const CallArgument* argument = matched[i] ? &arguments[*matched[i]] : nullptr;
        const OwnedValue value = ValueFor(parameters[i], argument, procedure);
        texts.push_back(value.View().IsNull() ? QString()
                                              : QStringLiteral("") + FromUtf8(value.View().text));
    }
    return texts;
}

void ProcedureCaller::Tell(int number, const QStringList& inserts) {
    Message message = SqlError(number, inserts).What();
    message.procedure = caller_.Procedure();
    sink_.Say(message);
}

// sp_rename @objname, @newname, @objtype.
int ProcedureCaller::Rename(std::vector<CallArgument>& arguments) {
    const Nested nested(caller_.Session());
    const SqlType text = MakeType(TypeKind::NVarChar, 1035);
    const std::vector<Parameter> parameters = {
        {QStringLiteral("@objname"), text, false, true, {}},
        {QStringLiteral("@newname"), SysnameType(), false, true, {}},
        {QStringLiteral("@objtype"), MakeType(TypeKind::VarChar, 13), false, false, {}}};
    const std::vector<QString> texts =
        TextArguments(parameters, arguments, QStringLiteral("sp_rename"));
    if (texts[1].isEmpty()) throw SqlError(15223, {parameters[1].name.mid(1)});
    sink_.ProcedureBegins();
    ObjectRename(caller_, caller_.Database()).Run(texts[0], texts[1], texts[2]);
    Tell(15477, {});
    sink_.ReturnStatus(0);
    return 0;
}

std::optional<ObjectInfo> ProcedureCaller::FindHere(Metadata& metadata, const QString& text) {
    const std::optional<tsql::ObjectName> name = tsql::ParseLooseName(text);
    if (!name || !name->server.isEmpty()) return std::nullopt;
    const bool here =
        name->database.isEmpty() || SameName(name->database, metadata.Database().name);
    return here ? metadata.Find(name->schema, name->name) : std::nullopt;
}

// sp_refreshview @viewname: its columns are what its query gives now.
int ProcedureCaller::RefreshView(std::vector<CallArgument>& arguments) {
    SessionState& session = caller_.Session();
    const Nested nested(session);
    const QString procedure = QStringLiteral("sp_refreshview");
    const QString name =
        TextArguments(
            {{QStringLiteral("@viewname"), MakeType(TypeKind::NVarChar, 776), false, true, {}}},
            arguments, procedure)
            .front();
    sink_.ProcedureBegins();
    Metadata metadata(session.store, caller_.Database());
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    const std::optional<ObjectInfo> view = FindHere(metadata, name);
    if (!view || view->type != u"V") throw SqlError(15165, {name});
    const ParseCache::Statements statements = ParseBatchText(view->definition, session);
    BindContext context = caller_.NewContext();
    const std::vector<ColumnInfo> columns =
        ViewColumns(context, static_cast<const tsql::CreateView&>(*statements->front()));
    metadata.Redefine(view->id, view->definition, view->schemaBound);
    for (const ColumnInfo& column : columns) metadata.AddColumn(view->id, column);
    writing.Commit();
    sink_.ReturnStatus(0);
    return 0;
}

// sp_recompile @objname: every statement is compiled when it runs, so there is nothing to mark.
int ProcedureCaller::Recompile(std::vector<CallArgument>& arguments) {
    const Nested nested(caller_.Session());
    const QString procedure = QStringLiteral("sp_recompile");
    const QString name =
        TextArguments(
            {{QStringLiteral("@objname"), MakeType(TypeKind::NVarChar, 776), false, true, {}}},
            arguments, procedure)
            .front();
    sink_.ProcedureBegins();
    Metadata metadata(caller_.Session().store, caller_.Database());
    const std::optional<ObjectInfo> object = FindHere(metadata, name);
    const bool known =
        object && (object->type == u"U" || object->type == u"V" || object->type == u"P");
    if (!known) throw SqlError(15165, {name});
    Tell(15070, {name});
    sink_.ReturnStatus(0);
    return 0;
}

}  // namespace quarv::localdb::engine
