#include "localdb/engine/ProcedureCaller.h"

#include "localdb/engine/Conversion.h"
#include "localdb/engine/SystemCall.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::engine {

// One level of calls. What a procedure sets of the options ends with it.
class ProcedureCaller::Nested {
  public:
    explicit Nested(SessionState& session) : session_(session), options_(session.options) {
        if (session.nestLevel >= MaxNesting) throw SqlError(217, {QString::number(MaxNesting)});
        ++session.nestLevel;
    }
    ~Nested() {
        --session_.nestLevel;
        session_.options = options_;
    }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;

  private:
    SessionState& session_;
    SessionOptions options_;
};

namespace {

OwnedValue Converted(const SqlValue& value, const SqlType& from, const SqlType& to) {
    TypeRules::CheckConversion(from, to, false);
    TextArena arena;
    return OwnedValue(Conversion::Convert(value, from, to, Conversion::NoStyle, arena));
}

tsql::StatementList ParseText(const QString& text) {
    try {
        return tsql::ParseBatch(text);
    } catch (const tsql::SyntaxError& error) {
        throw FromSyntaxError(error);
    }
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
    if (systemSchema && SameName(name.name, QStringLiteral("sp_executesql"))) {
        return ExecuteSql(arguments);
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
                caller_.Compute(*tsql::ParseExpressionText(*info.defaultText), info.type);
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
    return Converted(argument->value.View(), argument->type, parameter.type);
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
    runner.RunAll(body);
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
    const tsql::StatementList statements = ParseText(object.definition);
    const auto& definition = static_cast<const tsql::CreateProcedure&>(*statements.front());
    const std::vector<Parameter> parameters = LoadParameters(object, database);
    Frame frame(session, object.name, object.id);
    frame.SetHome(database);
    const int transactions = session.transactions.Count();
    sink_.ProcedureBegins();
    RunBody(frame, definition.body, parameters, arguments, object.name);
    if (session.transactions.Count() != transactions) {
        StatementRunner(frame, sink_)
            .Report(SqlError(266, {QString::number(transactions),
                                   QString::number(session.transactions.Count())}),
                    0);
    }
    sink_.ReturnStatus(frame.returnStatus);
    return frame.returnStatus;
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
    sink_.ProcedureBegins();
    SystemCall call(session.store, session.databases, database, session.objects, std::move(values),
                    sink_);
    const int status = procedure.run(call);
    sink_.ReturnStatus(status);
    return status;
}

// sp_executesql @statement, @declarations, values: the text runs with variables of its own.
int ProcedureCaller::ExecuteSql(std::vector<CallArgument>& arguments) {
    SessionState& session = caller_.Session();
    const QString name = QStringLiteral("sp_executesql");
    if (arguments.empty()) {
        throw SqlError(201, {name, QStringLiteral("@statement")});
    }
    const Nested nested(session);
    const SqlType text = MakeType(TypeKind::NVarChar, SqlType::Max);
    const auto textOf = [&](size_t i) {
        return FromUtf8(Converted(arguments[i].value.View(), arguments[i].type, text).View().text);
    };
    const tsql::StatementList body = ParseText(textOf(0));
    std::vector<Parameter> parameters;
    std::vector<CallArgument> values;
    if (arguments.size() > 1) {
        try {
            int ordinal = 0;
            for (const auto& declared : tsql::ParseParameterList(textOf(1))) {
                Parameter parameter{declared.name,
                                    BindType(declared.type, ++ordinal),
                                    declared.output,
                                    !declared.defaultValue,
                                    {}};
                parameters.push_back(std::move(parameter));
            }
        } catch (const tsql::SyntaxError& error) {
            throw FromSyntaxError(error);
        }
        values.assign(arguments.begin() + 2, arguments.end());
    }
    Frame frame(session, QString(), 0);
    frame.SetHome(caller_.Database());
    sink_.ProcedureBegins();
    RunBody(frame, body, parameters, values, name);
    for (size_t i = 0; i < values.size(); ++i) arguments[i + 2] = values[i];
    sink_.ReturnStatus(0);
    return 0;
}

void ProcedureCaller::RunText(const QString& text) {
    SessionState& session = caller_.Session();
    const Nested nested(session);
    const tsql::StatementList body = ParseText(text);
    Frame frame(session, QString(), 0);
    StatementRunner(frame, sink_).RunAll(body);
}

}  // namespace quarv::localdb::engine
