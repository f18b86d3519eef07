// What sends messages: PRINT, RAISERROR and THROW.
#include <algorithm>

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/MessageFormat.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/Print.h"
#include "localdb/tsql/RaiseError.h"
#include "localdb/tsql/TryCatch.h"

namespace quarv::localdb::engine {

namespace {

constexpr int WorstForAll = 18;   // beyond it, WITH LOG is asked for
constexpr int FromTable = -1;     // the severity or state that the message itself has
constexpr int FirstArgument = 4;  // its place among those of RAISERROR

FormatArgument ValueOf(const tsql::Expression& expression, Frame& frame) {
    BindContext context = frame.NewContext();
    const Scope none;
    ExpressionBinder binder(context, none);
    const BoundPtr value = binder.Value(expression);
    return {value->type, frame.Compute(*value)};
}

int IntegerOf(const tsql::Expression& expression, Frame& frame) {
    return static_cast<int>(frame.Compute(expression, IntType()).View().integer);
}

int Severity(int asked) {
    return std::clamp(asked, 0, 25);
}

int State(int asked) {
    return asked < 0 ? 1 : std::min(asked, 255);
}

// The text of a numbered message. Raises SqlError 2732 and 18054.
void FillNumbered(Message& message, int64_t number, std::vector<FormatArgument>& arguments,
                  int severity, int state) {
    if (!MessageFormat::IsRaisable(number)) {
        throw SqlError(2732, {QString::number(number), QString::number(MessageFormat::FirstNumber),
                              QStringLiteral("2147483647")});
    }
    const MessageText* entry = MessageFormat::FindRaisable(number);
    if (!entry) {
        throw SqlError(18054, {QString::number(number), QString::number(message.severity),
                               QString::number(message.state)});
    }
    if (severity == FromTable) message.severity = entry->severity;
    if (state == FromTable) message.state = entry->state;
    message.number = entry->number;
    message.text = MessageFormat::Cut(FillMessage(*entry, MessageFormat::Plain(arguments)));
}

Message MakeRaised(const tsql::RaiseError& node, Frame& frame) {
    const FormatArgument what = ValueOf(*node.message, frame);
    const int severity = IntegerOf(*node.severity, frame);
    const int state = IntegerOf(*node.state, frame);
    std::vector<FormatArgument> arguments;
    for (const auto& argument : node.arguments) arguments.push_back(ValueOf(*argument, frame));
    MessageFormat::CheckArguments(arguments, FirstArgument);
    Message message;
    message.number = MessageFormat::UserError;
    message.severity = Severity(severity);
    message.state = State(state);
    message.logged = node.log;
    if (ClassOf(what.type) == TypeClass::Text) {
        message.text = MessageFormat::Fill(FromUtf8(what.value.View().text), arguments);
    } else {
        FillNumbered(message, what.value.View().integer, arguments, severity, state);
    }
    if (message.severity > WorstForAll && !node.log) {
        throw SqlError(2754, {QString::number(WorstForAll)});
    }
    message.line = node.line;
    return message;
}

// The connection is of no use behind such an error: two messages, and the end.
[[noreturn]] void EndSession(const Message& message, Frame& frame, ResultSink& sink) {
    StatementRunner runner(frame, sink);
    runner.Report(
        SqlError(2745, {QString::number(frame.Session().id), QString::number(message.number),
                        QString::number(message.severity)}),
        message.line);
    runner.Report(SqlError(message), message.line);
    sink.StatementDone(StatementKind::Other, -1, true);
    throw BatchAborted();
}

}  // namespace

void RunPrint(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::Print&>(statement);
    const SqlType type = MakeType(TypeKind::NVarChar, 4000);
    const OwnedValue text = frame.Compute(*node.text, type);
    Message message;
    message.text = text.View().IsNull() ? QStringLiteral(" ") : FromUtf8(text.View().text);
    message.line = statement.line;
    message.procedure = frame.Procedure();
    message.state = 1;
    sink.Say(message);
    sink.StatementDone(StatementKind::Other, -1, false);
}

void RunRaiseError(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::RaiseError&>(statement);
    Message message = MakeRaised(node, frame);
    if (message.severity >= Message::FirstFatal) EndSession(message, frame, sink);
    if (message.severity > 10) throw SqlError(message);
    // "Database Engine error severities": 10 reaches a client as 0.
    if (message.severity == 10) message.severity = 0;
    message.procedure = frame.Procedure();
    sink.Say(message);
    sink.StatementDone(StatementKind::Other, -1, false);
    frame.Session().error = node.setError ? message.number : 0;
    frame.Session().rowCount = 0;
    if (node.noWait) sink.SendNow();
}

void RunThrow(const tsql::Statement& statement, Frame& frame, ResultSink&) {
    const auto& node = static_cast<const tsql::Throw&>(statement);
    // The parser lets it stand without arguments in a CATCH block only.
    if (!node.number) throw Rethrown(*frame.Session().caught);
    Message message;
    message.number = IntegerOf(*node.number, frame);
    if (message.number < MessageFormat::UserError)
        throw SqlError(35100, {QString::number(message.number)});
    const OwnedValue text = frame.Compute(*node.message, MakeType(TypeKind::NVarChar, 2048));
    message.text = FromUtf8(text.View().text);
    message.severity = 16;
    const OwnedValue state = frame.Compute(*node.state, MakeType(TypeKind::TinyInt));
    message.state = static_cast<int>(state.View().integer);
    throw SqlError(message);
}

}  // namespace quarv::localdb::engine
