// sp_addtype and sp_droptype: CREATE TYPE and DROP TYPE as older programs call them.
#include "localdb/engine/ProcedureCaller.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::engine {

namespace {

// Raises SqlError 15600 for what is none of the words that it may be.
QString Nullability(const QString& word) {
    const QString folded = word.toLower().simplified();
    if (folded.isEmpty() || folded == u"null") return QStringLiteral(" NULL");
    if (folded == u"not null" || folded == u"nonull") return QStringLiteral(" NOT NULL");
    throw SqlError(15600, {QStringLiteral("sp_addtype")});
}

}  // namespace

// The text has to be one statement on types and no more.
int ProcedureCaller::RunTypeText(const QString& text, const QString& procedure) {
    const std::shared_ptr<const tsql::StatementList> statements =
        ParseBatchText(text, caller_.Session());
    if (statements->size() != 1 || statements->front()->type != tsql::StatementType::Type) {
        throw SqlError(15600, {procedure});
    }
    sink_.ProcedureBegins();
    try {
        RunTypeStatement(*statements->front(), caller_, sink_);
    } catch (SqlError& error) {
        // The line of the call, which has this text nowhere.
        error.SetLine(0);
        throw;
    }
    sink_.ReturnStatus(0);
    return 0;
}

// sp_addtype @typename, @phystype, @nulltype, @owner.
int ProcedureCaller::AddType(std::vector<CallArgument>& arguments) {
    const Nested nested(caller_.Session());
    const QString procedure = QStringLiteral("sp_addtype");
    const std::vector<Parameter> parameters = {
        {QStringLiteral("@typename"), SysnameType(), false, true, {}},
        {QStringLiteral("@phystype"), SysnameType(), false, true, {}},
        {QStringLiteral("@nulltype"), MakeType(TypeKind::VarChar, 8), false, false, {}},
        {QStringLiteral("@owner"), SysnameType(), false, false, {}}};
    const std::vector<QString> texts = TextArguments(parameters, arguments, procedure);
    const QString owner = texts[3].isEmpty() ? QString() : tsql::Bracketed(texts[3]) + u'.';
    return RunTypeText(QStringLiteral("CREATE TYPE ") + owner + tsql::Bracketed(texts[0]) +
                           QStringLiteral(" FROM ") + texts[1] + Nullability(texts[2]),
                       procedure);
}

// sp_droptype @typename.
int ProcedureCaller::DropType(std::vector<CallArgument>& arguments) {
    const Nested nested(caller_.Session());
    const QString procedure = QStringLiteral("sp_droptype");
    const std::vector<QString> texts = TextArguments(
        {{QStringLiteral("@typename"), SysnameType(), false, true, {}}}, arguments, procedure);
    Metadata metadata(caller_.Session().store, caller_.Database());
    if (!metadata.FindType({}, texts[0])) throw SqlError(15036, {texts[0]});
    return RunTypeText(QStringLiteral("DROP TYPE ") + tsql::Bracketed(texts[0]), procedure);
}

}  // namespace quarv::localdb::engine
