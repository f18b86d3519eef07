#include <array>

#include "localdb/engine/AliasTypes.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/ParseCache.h"
#include "localdb/engine/ProcedureCaller.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/Select.h"

namespace quarv::localdb::engine {

namespace {

QString TextOf(const CallArgument& argument) {
    const SqlType text = MakeType(TypeKind::NVarChar, SqlType::Max);
    TextArena arena;
    return FromUtf8(
        Conversion::Convert(argument.value.View(), argument.type, text, Conversion::NoStyle, arena)
            .text);
}

void Require(const std::vector<CallArgument>& arguments, size_t count, const char* procedure,
             const char* parameter) {
    if (arguments.size() >= count) return;
    throw SqlError(201, {QString::fromLatin1(procedure), QString::fromLatin1(parameter)});
}

}  // namespace

ProcedureCaller::TextProcedure ProcedureCaller::FindTextProcedure(const QString& name) {
    struct Entry {
        QStringView name;
        TextProcedure run;
    };
    static const std::array<Entry, 10> table = {{
        {u"sp_executesql", &ProcedureCaller::ExecuteSql},
        {u"sp_prepare", &ProcedureCaller::Prepare},
        {u"sp_prepexec", &ProcedureCaller::PrepareAndExecute},
        {u"sp_execute", &ProcedureCaller::ExecutePrepared},
        {u"sp_unprepare", &ProcedureCaller::Unprepare},
        {u"sp_rename", &ProcedureCaller::Rename},
        {u"sp_refreshview", &ProcedureCaller::RefreshView},
        {u"sp_recompile", &ProcedureCaller::Recompile},
        {u"sp_addtype", &ProcedureCaller::AddType},
        {u"sp_droptype", &ProcedureCaller::DropType},
    }};
    for (const Entry& entry : table) {
        if (entry.name.compare(name, Qt::CaseInsensitive) == 0) return entry.run;
    }
    return nullptr;
}

std::vector<ProcedureCaller::Parameter> ProcedureCaller::ReadDeclarations(const QString& text) {
    std::vector<Parameter> parameters;
    try {
        int ordinal = 0;
        for (const tsql::ParameterDefinition& declared : tsql::ParseParameterList(text)) {
            parameters.push_back({declared.name,
                                  BindVariableType(caller_, declared.type, ++ordinal),
                                  declared.output,
                                  true,
                                  {}});
        }
    } catch (const tsql::SyntaxError& error) {
        throw FromSyntaxError(error);
    }
    return parameters;
}

int ProcedureCaller::RunPrepared(const PreparedText& prepared, std::vector<CallArgument>& arguments,
                                 size_t first, const QString& procedure) {
    SessionState& session = caller_.Session();
    const Nested nested(session);
    std::optional<RepeatedSelects::Batch> body;
    try {
        body.emplace(*session.parsed, prepared.text, prepared.declarations);
    } catch (const tsql::SyntaxError& error) {
        throw FromSyntaxError(error);
    }
    const std::vector<Parameter> parameters = ReadDeclarations(prepared.declarations);
    const auto begin = arguments.begin() + static_cast<ptrdiff_t>(first);
    std::vector<CallArgument> values(begin, arguments.end());
    Frame frame(session, QString(), 0);
    frame.SetHome(caller_.Database());
    Called called(sink_);
    RunBody(frame, body->Statements(), parameters, values, procedure);
    std::copy(values.begin(), values.end(), begin);
    // "sp_executesql": the number of the error, where the last statement has failed.
    return called.Return(session.error);
}

// sp_executesql @statement, @declarations, values.
int ProcedureCaller::ExecuteSql(std::vector<CallArgument>& arguments) {
    Require(arguments, 1, "sp_executesql", "@statement");
    const bool declared = arguments.size() > 1;
    const PreparedText text{declared ? TextOf(arguments[1]) : QString(), TextOf(arguments[0])};
    return RunPrepared(text, arguments, declared ? 2 : 1, QStringLiteral("sp_executesql"));
}

// The first argument is the handle that comes back, then the declarations and the statement.
int64_t ProcedureCaller::KeepPrepared(std::vector<CallArgument>& arguments) {
    SessionState& session = caller_.Session();
    const int64_t handle = session.prepared.Keep({TextOf(arguments[1]), TextOf(arguments[2])});
    arguments[0].type = IntType();
    arguments[0].value = SqlValue::Integer(handle);
    arguments[0].changed = arguments[0].output;
    return handle;
}

// sp_prepare @handle OUTPUT, @declarations, @statement, @options. With option 1 the client wants to
// know the columns before anything runs; a name that is unknown is found then, else when it runs.
int ProcedureCaller::Prepare(std::vector<CallArgument>& arguments) {
    Require(arguments, 3, "sp_prepare", "@stmt");
    Called called(sink_);
    const int64_t handle = KeepPrepared(arguments);
    try {
        const PreparedText prepared = *caller_.Session().prepared.Find(handle);
        const ParseCache::Statements body = ParseBatchText(prepared.text, caller_.Session());
        if (arguments.size() > 3 && TextOf(arguments[3]) == u'1') Describe(prepared, *body);
    } catch (...) {
        caller_.Session().prepared.Forget(handle);
        throw;
    }
    return called.Return(0);
}

void ProcedureCaller::Describe(const PreparedText& prepared, const tsql::StatementList& body) {
    SessionState& session = caller_.Session();
    if (body.empty() || body.front()->type != tsql::StatementType::Select) return;
    Frame frame(session, QString(), 0);
    frame.SetHome(caller_.Database());
    for (const Parameter& parameter : ReadDeclarations(prepared.declarations)) {
        frame.Variables().Declare(parameter.name, parameter.type);
    }
    const Transactions::Reading reading(session.transactions);
    BindContext context = frame.NewContext();
    QueryBinder binder(context, nullptr);
    const auto query = binder.Bind(*static_cast<const tsql::Select&>(*body.front()).query);
    if (!query->assigned.empty()) return;
    sink_.BeginRows(query->columns);
    sink_.StatementDone(StatementKind::Select, -1, false);
}

// sp_prepexec @handle OUTPUT, @declarations, @statement, values.
int ProcedureCaller::PrepareAndExecute(std::vector<CallArgument>& arguments) {
    Require(arguments, 3, "sp_prepexec", "@stmt");
    const int64_t handle = KeepPrepared(arguments);
    try {
        return RunPrepared(PreparedText(*caller_.Session().prepared.Find(handle)), arguments, 3,
                           QStringLiteral("sp_prepexec"));
    } catch (...) {
        // A client that gets no handle cannot let go of one.
        caller_.Session().prepared.Forget(handle);
        throw;
    }
}

int64_t ProcedureCaller::FindPrepared(const std::vector<CallArgument>& arguments,
                                      const QString& procedure) {
    const Parameter parameter{QStringLiteral("@handle"), IntType(), false, true, {}};
    const OwnedValue handle = ValueFor(parameter, &arguments[0], procedure);
    const int64_t number = handle.View().IsNull() ? 0 : handle.View().integer;
    if (!caller_.Session().prepared.Find(number)) {
        throw SqlError(8179, {QString::number(number)});
    }
    return number;
}

// sp_execute @handle, values.
int ProcedureCaller::ExecutePrepared(std::vector<CallArgument>& arguments) {
    Require(arguments, 1, "sp_execute", "@handle");
    const QString name = QStringLiteral("sp_execute");
    const int64_t handle = FindPrepared(arguments, name);
    // A copy: the text may let go of its own handle.
    return RunPrepared(PreparedText(*caller_.Session().prepared.Find(handle)), arguments, 1, name);
}

// sp_unprepare @handle.
int ProcedureCaller::Unprepare(std::vector<CallArgument>& arguments) {
    Require(arguments, 1, "sp_unprepare", "@handle");
    const int64_t handle = FindPrepared(arguments, QStringLiteral("sp_unprepare"));
    Called called(sink_);
    caller_.Session().prepared.Forget(handle);
    return called.Return(0);
}

}  // namespace quarv::localdb::engine
