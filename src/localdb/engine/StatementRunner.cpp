#include "localdb/engine/StatementRunner.h"

#include <algorithm>
#include <array>

#include "localdb/engine/ErrorRules.h"
#include "localdb/engine/ErrorSummary.h"
#include "localdb/engine/ParseCache.h"
#include "localdb/tsql/ControlFlow.h"
#include "localdb/tsql/Declare.h"
#include "localdb/tsql/Jumps.h"
#include "localdb/tsql/Select.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::engine {

namespace {

using tsql::StatementType;

using Runner = void (*)(const tsql::Statement&, Frame&, ResultSink&);

Runner FindRunner(StatementType type) {
    struct Entry {
        StatementType type;
        Runner run;
    };
    static constexpr Entry Table[] = {
        {StatementType::AlterDatabase, RunAlterDatabase},
        {StatementType::AlterIndex, RunAlterIndex},
        {StatementType::AlterTable, RunAlterTable},
        {StatementType::CreateDatabase, RunCreateDatabase},
        {StatementType::CreateIndex, RunCreateIndex},
        {StatementType::CreateProcedure, RunCreateProcedure},
        {StatementType::CreateTable, RunCreateTable},
        {StatementType::CreateView, RunCreateView},
        {StatementType::Declare, RunDeclare},
        {StatementType::Delete, RunDelete},
        {StatementType::DropObject, RunDrop},
        {StatementType::Execute, RunExecute},
        {StatementType::Insert, RunInsert},
        {StatementType::Print, RunPrint},
        {StatementType::RaiseError, RunRaiseError},
        {StatementType::Schema, RunSchemaStatement},
        {StatementType::Select, RunSelect},
        {StatementType::SetOption, RunSetOption},
        {StatementType::SetVariable, RunSetVariable},
        {StatementType::Throw, RunThrow},
        {StatementType::Transaction, RunTransaction},
        {StatementType::Truncate, RunTruncate},
        {StatementType::Type, RunTypeStatement},
        {StatementType::Update, RunUpdate},
        {StatementType::Use, RunUse},
        {StatementType::WaitFor, RunWaitFor},
    };
    for (const Entry& entry : Table) {
        if (entry.type == type) return entry.run;
    }
    return nullptr;
}

StatementKind KindOf(StatementType type) {
    switch (type) {
        case StatementType::Select:
            return StatementKind::Select;
        case StatementType::Insert:
            return StatementKind::Insert;
        case StatementType::Update:
            return StatementKind::Update;
        case StatementType::Delete:
            return StatementKind::Delete;
        default:
            return StatementKind::Other;
    }
}

bool ChangesRows(StatementType type) {
    return type == StatementType::Insert || type == StatementType::Update ||
           type == StatementType::Delete;
}

// SELECT INTO writes rows as well.
bool WritesRows(const tsql::Statement& statement) {
    return ChangesRows(statement.type) || (statement.type == StatementType::Select &&
                                           static_cast<const tsql::Select&>(statement).query->into);
}

// DECLARE is nothing that runs, unless it gives a value.
bool SetsNothing(const tsql::Statement& statement) {
    if (statement.type != StatementType::Declare) return false;
    const auto& items = static_cast<const tsql::Declare&>(statement).items;
    return std::none_of(items.begin(), items.end(),
                        [](const tsql::Declare::Item& item) { return item.value != nullptr; });
}

bool Undoes(int number, const tsql::Statement& statement, const SessionOptions& options) {
    if (ErrorRules::EndsBatchAndTransaction(number)) return true;
    // "SET XACT_ABORT": neither errors of compiling nor RAISERROR's are affected.
    return options.xactAbort && statement.type != StatementType::RaiseError &&
           !ErrorRules::IsCompileError(number);
}

}  // namespace

SqlError FromSyntaxError(const tsql::SyntaxError& error) {
    return SqlError(error.Number(), error.Inserts(), error.Line());
}

std::shared_ptr<const tsql::StatementList> ParseBatchText(const QString& text,
                                                          SessionState& session) {
    try {
        return session.parsed->Batch(text);
    } catch (const tsql::SyntaxError& error) {
        throw FromSyntaxError(error);
    }
}

Message StatementRunner::Complete(Message message, int line) const {
    if (message.line == 0) message.line = line;
    message.procedure = frame_.Procedure();
    return message;
}

void StatementRunner::Send(const Message& message) {
    frame_.Session().error = message.number;
    frame_.worstSeverity = std::max(frame_.worstSeverity, message.severity);
    sink_.Say(message);
}

void StatementRunner::Report(SqlError error, int line) {
    Send(Complete(error.What(), line));
}

void StatementRunner::Raise(const SqlError& error, int line) {
    if (frame_.Session().tries == 0) return Report(error, line);
    throw CaughtError{Complete(error.What(), line)};
}

Flow StatementRunner::RunAll(const tsql::StatementList& statements) {
    for (size_t i = jump_ ? PassToJump(statements, 0) : 0; i < statements.size();) {
        const Flow flow = RunOne(*statements[i]);
        if (flow == Flow::Next) {
            ++i;
            continue;
        }
        if (flow != Flow::Jump) return flow;
        i = PassToJump(statements, i);
    }
    return jump_ ? Flow::Jump : Flow::Next;
}

void StatementRunner::RunScope(const tsql::StatementList& statements) {
    try {
        RunAll(statements);
    } catch (const ScopeAborted&) {
        // What called it goes on.
    }
}

// Runs a statement; what it raises becomes a message, and the next statement follows unless the
// error is of the kind that ends more than the statement, or a CATCH block waits for it.
Flow StatementRunner::RunOne(const tsql::Statement& statement) {
    frame_.BeginStatement();
    if (sink_.Cancelled()) throw Cancelled();
    const SessionOptions& options = frame_.Session().options;
    if (options.noExec && statement.type != StatementType::SetOption) return Flow::Next;
    try {
        if (options.implicitTransactions) BeginImplicitly(statement);
        const Flow flow = Dispatch(statement);
        Settle(statement);
        return flow;
    } catch (const Rethrown& error) {
        Fail(error.What(), statement);
    } catch (const SqlError& error) {
        // A CATCH block would see the last message only.
        if (frame_.Session().tries == 0) {
            for (const Message& cause : ErrorSummary::CausesOf(error)) {
                Send(Complete(cause, statement.line));
            }
        }
        Fail(Complete(error.What(), statement.line), statement, ErrorSummary::EndsStatement(error));
    }
    return Flow::Next;
}

// What a statement that went well leaves in @@ERROR and @@ROWCOUNT.
void StatementRunner::Settle(const tsql::Statement& statement) {
    SessionState& session = frame_.Session();
    switch (statement.type) {
        case StatementType::Block:
        case StatementType::Execute:
        case StatementType::Goto:
        case StatementType::If:
        case StatementType::Label:
        case StatementType::LoopJump:
        case StatementType::RaiseError:
        case StatementType::Try:
        case StatementType::While:
            return;
        case StatementType::Declare:
            if (SetsNothing(statement)) return;
            session.error = 0;
            session.rowCount = 1;
            return;
        case StatementType::Delete:
        case StatementType::Insert:
        case StatementType::Return:
        case StatementType::Select:
        case StatementType::SetVariable:
        case StatementType::Update:
            session.error = 0;
            return;
        default:
            session.error = 0;
            session.rowCount = 0;
    }
}

void StatementRunner::Fail(Message message, const tsql::Statement& statement, bool terminates) {
    SessionState& session = frame_.Session();
    session.rowCount = 0;
    const int number = message.number;
    const bool compiled =
        ErrorRules::IsCompileError(number) && ErrorRules::IsOwn(number, statement);
    HandOver(message, compiled, statement);
    Send(message);
    session.transactions.CheckLost(sink_);
    if (ErrorRules::IsConstraintFailure(number)) Report(SqlError(1750), statement.line);
    if (terminates || (WritesRows(statement) && ErrorRules::TerminatesStatement(number))) {
        Report(SqlError(3621), statement.line);
        session.error = number;
    }
    sink_.StatementDone(KindOf(statement.type), -1, true);
    const bool undo = Undoes(number, statement, session.options);
    if (undo && session.transactions.Count() > 0) session.transactions.Rollback({}, sink_);
    const bool thrown = statement.type == StatementType::Throw;
    const bool fatal = message.severity >= Message::FirstFatal;
    if (undo || thrown || fatal || ErrorRules::EndsBatch(number)) throw BatchAborted();
    if (compiled && (ErrorRules::EndsScope(number) || frame_.tries > 0)) throw ScopeAborted();
}

// Where a CATCH block waits for the error it is thrown there; its client sees no message.
void StatementRunner::HandOver(const Message& message, bool compiled,
                               const tsql::Statement& statement) {
    SessionState& session = frame_.Session();
    const int waiting = session.tries - (compiled ? frame_.tries : 0);
    if (waiting == 0 || message.severity >= Message::FirstFatal) return;
    session.transactions.CheckLost(sink_);
    if (Undoes(message.number, statement, session.options)) session.transactions.Doom();
    const StatementKind kind = KindOf(statement.type);
    if (kind != StatementKind::Other) {
        const bool counts = ChangesRows(statement.type) && !session.options.noCount;
        sink_.StatementDone(kind, counts ? 0 : -1, false);
    }
    CaughtError caught{message, compiled ? &frame_ : nullptr};
    // The last message of a statement is the one that is caught.
    if (ErrorRules::IsConstraintFailure(message.number)) {
        caught.message = Complete(SqlError(1750).What(), statement.line);
    }
    throw caught;
}

Flow StatementRunner::Dispatch(const tsql::Statement& statement) {
    switch (statement.type) {
        case StatementType::Block:
            return RunAll(static_cast<const tsql::Block&>(statement).statements);
        case StatementType::If:
            return RunIf(statement);
        case StatementType::While:
            return RunWhile(statement);
        case StatementType::LoopJump:
            return static_cast<const tsql::LoopJump&>(statement).leaves ? Flow::Break
                                                                        : Flow::Continue;
        case StatementType::Goto:
            jump_ = static_cast<const tsql::Goto&>(statement).target;
            return Flow::Jump;
        case StatementType::Label:
            jump_ = nullptr;
            return Flow::Next;
        case StatementType::Return:
            return RunReturn(statement);
        case StatementType::Try:
            return RunTry(statement);
        default:
            FindRunner(statement.type)(statement, frame_, sink_);
            return Flow::Next;
    }
}

}  // namespace quarv::localdb::engine
