#include "localdb/engine/Conversion.h"
#include "localdb/engine/LiteralValue.h"
#include "localdb/engine/ProcedureCaller.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/Execute.h"

namespace quarv::localdb::engine {

namespace {

const tsql::Variable* AsVariable(const tsql::Expression& expression) {
    return expression.kind == tsql::ExpressionKind::Variable
               ? static_cast<const tsql::Variable*>(&expression)
               : nullptr;
}

bool IsDefault(const tsql::Expression& expression) {
    return expression.kind == tsql::ExpressionKind::Literal &&
           static_cast<const tsql::Literal&>(expression).literal == tsql::LiteralKind::Default;
}

CallArgument Evaluate(const tsql::ExecuteArgument& node, Frame& frame) {
    CallArgument argument;
    argument.name = node.name;
    argument.output = node.output;
    argument.isDefault = IsDefault(*node.value);
    if (argument.isDefault) return argument;
    BindContext context = frame.NewContext();
    const Scope none;
    ExpressionBinder binder(context, none);
    const BoundPtr value = binder.Value(*node.value);
    argument.type = value->type;
    argument.value = frame.Compute(*value);
    return argument;
}

void SetVariable(const QString& name, const SqlValue& value, const SqlType& type, Frame& frame) {
    VariableTable& variables = frame.Variables();
    const std::optional<size_t> index = variables.Find(name);
    if (!index) throw SqlError(137, {name});
    TextArena arena;
    variables.Set(*index, Conversion::Convert(value, type, variables.At(*index).type,
                                              Conversion::NoStyle, arena));
}

// What the statement calls, by its name or by a variable that holds one.
tsql::ObjectName NameOf(const tsql::Execute& node, Frame& frame) {
    if (node.procedureVariable.isEmpty()) return node.procedure;
    const std::optional<size_t> index = frame.Variables().Find(node.procedureVariable);
    if (!index) throw SqlError(137, {node.procedureVariable});
    const QString name = FromUtf8(frame.VariableValue(*index).text);
    const std::optional<tsql::ObjectName> parsed = tsql::ParseLooseName(name);
    if (!parsed) throw SqlError(2812, {name});
    return *parsed;
}

}  // namespace

void RunExecute(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::Execute&>(statement);
    ProcedureCaller caller(frame, sink);
    if (node.text) {
        const SqlType type = MakeType(TypeKind::NVarChar, SqlType::Max);
        caller.RunText(FromUtf8(frame.Compute(*node.text, type).View().text));
        return;
    }
    std::vector<CallArgument> arguments;
    for (const tsql::ExecuteArgument& argument : node.arguments) {
        arguments.push_back(Evaluate(argument, frame));
    }
    const int status = caller.Call(NameOf(node, frame), arguments);
    for (size_t i = 0; i < arguments.size(); ++i) {
        const tsql::Variable* variable = AsVariable(*node.arguments[i].value);
        if (!arguments[i].changed || !variable) continue;
        SetVariable(variable->name, arguments[i].value.View(), arguments[i].type, frame);
    }
    if (!node.status.isEmpty()) {
        SetVariable(node.status, SqlValue::Integer(status), IntType(), frame);
    }
    sink.StatementDone(StatementKind::Execute, -1, false);
}

}  // namespace quarv::localdb::engine
