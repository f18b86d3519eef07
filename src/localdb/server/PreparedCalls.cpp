#include "localdb/server/PreparedCalls.h"

#include <array>

#include "localdb/server/ServerMessages.h"

namespace quarv::localdb::server {

namespace {

// Of sp_prepare and sp_prepexec: handle, declarations, text, then options or values.
constexpr size_t DeclarationsAt = 1;
constexpr size_t TextAt = 2;
constexpr size_t OptionsAt = 3;

// sp_executesql takes its first two by position, whatever the client called them.
engine::Argument Positional(engine::Argument argument) {
    argument.name.clear();
    return argument;
}

}  // namespace

const PreparedCalls::Entry* PreparedCalls::Find(const QString& procedure) {
    static constexpr std::array<Entry, 4> Entries{{
        {"sp_prepare", &PreparedCalls::Prepare},
        {"sp_execute", &PreparedCalls::Execute},
        {"sp_prepexec", &PreparedCalls::PrepareAndExecute},
        {"sp_unprepare", &PreparedCalls::Unprepare},
    }};
    for (const Entry& entry : Entries) {
        if (procedure.compare(QLatin1String(entry.name), Qt::CaseInsensitive) == 0) return &entry;
    }
    return nullptr;
}

bool PreparedCalls::Run(const QString& procedure, const Arguments& arguments,
                        engine::Session& session, ReplySink& sink) {
    const Entry* entry = Find(procedure);
    if (entry == nullptr) return false;
    (this->*entry->handler)(arguments, session, sink);
    return true;
}

void PreparedCalls::Refuse(int number, const QStringList& inserts, ReplySink& sink) {
    sink.Tell(MakeMessage(number, inserts, serverName_));
    sink.StatementDone(engine::StatementKind::Execute, -1, true);
}

std::optional<int32_t> PreparedCalls::Keep(const Arguments& arguments, const char* procedure,
                                           ReplySink& sink) {
    if (arguments.size() <= TextAt || arguments[TextAt].null) {
        Refuse(message::ParameterMissing, {QString::fromLatin1(procedure), QStringLiteral("@stmt")},
               sink);
        return std::nullopt;
    }
    if (statements_.size() >= Most) {
        Refuse(message::NotSupported, {QStringLiteral("%1 prepared statements at once").arg(Most)},
               sink);
        return std::nullopt;
    }
    Statement statement{Positional(arguments[TextAt])};
    const engine::Argument& declarations = arguments[DeclarationsAt];
    if (!declarations.null && !declarations.text.isEmpty()) {
        statement.push_back(Positional(declarations));
    }
    statements_.insert(++lastHandle_, statement);
    return lastHandle_;
}

void PreparedCalls::Prepare(const Arguments& arguments, engine::Session&, ReplySink& sink) {
    // Option 1 asks for the columns of a statement that has not run; saying nothing would mean
    // that it has none.
    if (arguments.size() > OptionsAt && arguments[OptionsAt].text == u'1') {
        Refuse(message::NotSupported, {QStringLiteral("sp_prepare with metadata")}, sink);
        return;
    }
    const auto handle = Keep(arguments, "sp_prepare", sink);
    if (!handle) return;
    sink.ReturnHandle(*handle);
    sink.ProcedureBegins();
    sink.ReturnStatus(0);
}

void PreparedCalls::PrepareAndExecute(const Arguments& arguments, engine::Session& session,
                                      ReplySink& sink) {
    const auto handle = Keep(arguments, "sp_prepexec", sink);
    if (!handle) return;
    sink.ReturnHandle(*handle);
    RunStatement(statements_[*handle], arguments, TextAt + 1, session, sink);
    // A text that could not be run at all was not prepared: the client got no handle to release.
    if (!sink.HandleReturned()) statements_.remove(*handle);
}

std::optional<int32_t> PreparedCalls::HandleOf(const Arguments& arguments, ReplySink& sink) {
    const QString text = arguments.empty() ? QString() : arguments.front().text;
    bool isNumber = false;
    const int32_t handle = text.toInt(&isNumber);
    if (isNumber && statements_.contains(handle)) return handle;
    Refuse(message::NoPreparedStatement, {isNumber ? text : QStringLiteral("0")}, sink);
    return std::nullopt;
}

void PreparedCalls::Execute(const Arguments& arguments, engine::Session& session, ReplySink& sink) {
    const auto handle = HandleOf(arguments, sink);
    if (handle) RunStatement(statements_[*handle], arguments, 1, session, sink);
}

void PreparedCalls::Unprepare(const Arguments& arguments, engine::Session&, ReplySink& sink) {
    const auto handle = HandleOf(arguments, sink);
    if (!handle) return;
    statements_.remove(*handle);
    sink.ProcedureBegins();
    sink.ReturnStatus(0);
}

void PreparedCalls::RunStatement(const Statement& statement, const Arguments& arguments,
                                 size_t firstValue, engine::Session& session, ReplySink& sink) {
    Arguments all = statement;
    for (size_t i = firstValue; i < arguments.size(); ++i) all.push_back(arguments[i]);
    session.RunProcedure(QStringLiteral("sp_executesql"), all, sink);
}

}  // namespace quarv::localdb::server
