#include "localdb/engine/ProcedureCaller.h"

#include <algorithm>
#include <iterator>

#include "localdb/engine/Conversion.h"
#include "localdb/engine/ParseCache.h"
#include "localdb/engine/SystemCall.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::engine {

namespace {

OwnedValue Converted(const SqlValue& value, const SqlType& from, const SqlType& to) {
    TypeRules::CheckConversion(from, to, false);
    TextArena arena;
    return OwnedValue(Conversion::Convert(value, from, to, Conversion::NoStyle, arena));
}

// Procedures that clients know by number and that would have to do more than run a text: cursors
// in the server, a call prepared as a call, what a text would give if it ran, and messages of one's
// own.
bool IsUnsupported(const QString& name) {
    constexpr QStringView Names[] = {u"sp_addmessage",
                                     u"sp_altermessage",
                                     u"sp_dropmessage",
                                     u"sp_prepexecrpc",
                                     u"sp_describe_first_result_set",
                                     u"sp_describe_undeclared_parameters"};
    if (name.startsWith(u"sp_cursor", Qt::CaseInsensitive)) return true;
    return std::any_of(std::begin(Names), std::end(Names), [&name](QStringView other) {
        return name.compare(other, Qt::CaseInsensitive) == 0;
    });
}

}  // namespace

int ProcedureCaller::Call(const tsql::ObjectName& name, std::vector<CallArgument>& arguments) {
    SessionState& session = caller_.Session();
    if (!name.server.isEmpty()) throw SqlError(40515, {name.ToText()}, name.line);
    DatabaseEntry database = caller_.Database();
    if (!name.database.isEmpty()) {
        const std::optional<DatabaseEntry> entry = session.databases.Find(name.database);
        if (!entry) throw SqlError(2812, {name.ToText()}, name.line);
        database = *entry;
    }
    const bool systemSchema = name.schema.isEmpty() ||
                              SameName(name.schema, QStringLiteral("sys")) ||
                              SameName(name.schema, QStringLiteral("dbo"));
    if (systemSchema && IsUnsupported(name.name)) {
        throw SqlError(40517, {QStringLiteral("procedure ") + name.name}, name.line);
    }
    if (const TextProcedure procedure = systemSchema ? FindTextProcedure(name.name) : nullptr) {
        return (this->*procedure)(arguments);
    }
    if (systemSchema) {
        if (const SystemProcedure* procedure = session.objects.FindProcedure(name.name)) {
            return CallSystem(*procedure, database, arguments);
        }
    }
    Metadata metadata(session.store, database);
    const std::optional<ObjectInfo> object = metadata.Find(name.schema, name.name);
    if (!object || object->type != u"P") throw SqlError(2812, {name.ToText()}, name.line);
    return CallStored(*object, database, arguments);
}

std::vector<ProcedureCaller::Parameter> ProcedureCaller::LoadParameters(
    const ObjectInfo& object, const DatabaseEntry& database) {
    std::vector<Parameter> parameters;
    Metadata metadata(caller_.Session().store, database);
    for (const ParameterInfo& info : metadata.LoadParameters(object.id)) {
        Parameter parameter{info.name, info.type, info.output, !info.defaultText, {}};
        if (info.defaultText) {
            parameter.defaultValue =
                caller_.Compute(*caller_.Session().parsed->Value(*info.defaultText), info.type);
        }
        parameters.push_back(std::move(parameter));
    }
    return parameters;
}

std::vector<std::optional<size_t>> ProcedureCaller::Match(
    const std::vector<Parameter>& parameters, const std::vector<CallArgument>& arguments,
    const QString& procedure) {
    std::vector<std::optional<size_t>> matched(parameters.size());
    bool named = false;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const CallArgument& argument = arguments[i];
        if (argument.name.isEmpty()) {
            if (named) throw SqlError(119, {QString::number(i + 1)});
            if (i >= parameters.size()) throw SqlError(8144, {procedure});
            matched[i] = i;
            continue;
        }
        named = true;
        size_t place = 0;
        while (place < parameters.size() && !SameName(parameters[place].name, argument.name))
            ++place;
        if (place == parameters.size()) throw SqlError(8145, {argument.name, procedure});
        if (matched[place]) throw SqlError(8143, {argument.name});
        matched[place] = i;
    }
    return matched;
}

OwnedValue ProcedureCaller::ValueFor(const Parameter& parameter, const CallArgument* argument,
                                     const QString& procedure) {
    if (!argument || argument->isDefault) {
        if (parameter.required) throw SqlError(201, {procedure, parameter.name});
        return parameter.defaultValue;
    }
    if (argument->output && !parameter.output) throw SqlError(8162, {parameter.name});
    try {
        return Converted(argument->value.View(), argument->type, parameter.type);
    } catch (const SqlError&) {
        // Whatever is wrong with it, an argument is told so.
        throw SqlError(8114, {argument->type.Name(), parameter.type.Name()});
    }
}

void ProcedureCaller::RunBody(Frame& frame, const tsql::StatementList& body,
                              const std::vector<Parameter>& parameters,
                              std::vector<CallArgument>& arguments, const QString& procedure) {
    const std::vector<std::optional<size_t>> matched = Match(parameters, arguments, procedure);
    VariableTable& variables = frame.Variables();
    for (size_t i = 0; i < parameters.size(); ++i) {
        const CallArgument* argument = matched[i] ? &arguments[*matched[i]] : nullptr;
        const OwnedValue value = ValueFor(parameters[i], argument, procedure);
        variables.Set(variables.Declare(parameters[i].name, parameters[i].type), value.View());
    }
    StatementRunner runner(frame, sink_);
    runner.RunScope(body);
    for (size_t i = 0; i < parameters.size(); ++i) {
        if (!matched[i] || !arguments[*matched[i]].output) continue;
        CallArgument& argument = arguments[*matched[i]];
        const SqlValue value = variables.At(i).value.View();
        argument.value = Converted(value, parameters[i].type, argument.type);
        argument.changed = true;
    }
}

int ProcedureCaller::CallStored(const ObjectInfo& object, const DatabaseEntry& database,
                                std::vector<CallArgument>& arguments) {
    SessionState& session = caller_.Session();
    const Nested nested(session);
    const ParseCache::Statements statements = ParseBatchText(object.definition, session);
    const auto& definition = static_cast<const tsql::CreateProcedure&>(*statements->front());
    const std::vector<Parameter> parameters = LoadParameters(object, database);
    Frame frame(session, object.name, object.id);
    frame.SetHome(database);
    const int transactions = session.transactions.Count();
    Called called(sink_);
    RunBody(frame, definition.body, parameters, arguments, object.name);
    const int status = frame.Status();
    const int left = session.transactions.Count();
    if (left != transactions) {
        StatementRunner(frame, sink_)
            .Raise(SqlError(266, {QString::number(transactions), QString::number(left)}), 0);
    }
    return called.Return(status);
}

int ProcedureCaller::CallSystem(const SystemProcedure& procedure, const DatabaseEntry& database,
                                std::vector<CallArgument>& arguments) {
    SessionState& session = caller_.Session();
    const Nested nested(session);
    std::vector<Parameter> parameters;
    for (const SystemParameter& parameter : procedure.parameters) {
        parameters.push_back({parameter.name, parameter.type, false, parameter.required, {}});
    }
    const std::vector<std::optional<size_t>> matched = Match(parameters, arguments, procedure.name);
    std::vector<OwnedValue> values;
    for (size_t i = 0; i < parameters.size(); ++i) {
        const CallArgument* argument = matched[i] ? &arguments[*matched[i]] : nullptr;
        values.push_back(ValueFor(parameters[i], argument, procedure.name));
    }
    const Transactions::Reading reading(session.transactions);
    Called called(sink_);
    SystemCall call(session.store, session.databases, database, session.objects, std::move(values),
                    sink_);
    call.SetClient({session.id, session.login, session.hostName, session.database.name});
    return called.Return(procedure.run(call));
}

void ProcedureCaller::RunText(const QString& text) {
    SessionState& session = caller_.Session();
    const Nested nested(session);
    const ParseCache::Statements body = ParseBatchText(text, session);
    Frame frame(session, QString(), 0);
    StatementRunner(frame, sink_).RunScope(*body);
}

}  // namespace quarv::localdb::engine
