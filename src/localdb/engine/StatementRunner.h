// StatementRunner: runs the statements of one frame, one after another, and turns what they raise
// into messages, or hands it to the CATCH block that is nearest. Each kind of statement has a
// runner of its own.
#pragma once

#include "localdb/engine/Frame.h"
#include "localdb/engine/SqlError.h"
#include "localdb/tsql/Statement.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::tsql {
struct Label;
struct Query;
}  // namespace quarv::localdb::tsql

namespace quarv::localdb::engine {

// Thrown through frames when an error ends the whole batch; its message was sent.
struct BatchAborted {};

// Thrown to the end of a frame when an error ends that frame only; its message was sent.
struct ScopeAborted {};

// Thrown to the nearest CATCH block, which keeps the message from the client.
struct CaughtError {
    Message message;
    // The frame whose CATCH blocks do not see the error: it was found while that frame's text was
    // being compiled. Nothing where every one does.
    const Frame* unseenBy = nullptr;
};

// How a statement list went on.
enum class Flow : uint8_t { Next, Break, Continue, Return, Jump };

class StatementRunner {
  public:
    StatementRunner(Frame& frame, ResultSink& sink) : frame_(frame), sink_(sink) {}

    Flow RunAll(const tsql::StatementList& statements);
    // A whole procedure or text: ends where an error ends its scope.
    void RunScope(const tsql::StatementList& statements);
    // Sends the message of an error that lies outside every statement.
    void Report(SqlError error, int line);
    // As Report, unless a CATCH block waits for it.
    void Raise(const SqlError& error, int line);

  private:
    Flow RunOne(const tsql::Statement& statement);
    Flow Dispatch(const tsql::Statement& statement);
    void Settle(const tsql::Statement& statement);
    // `terminates`: message 3621 follows whatever the statement is.
    void Fail(Message message, const tsql::Statement& statement, bool terminates = false);
    void HandOver(const Message& message, bool compiled, const tsql::Statement& statement);
    void Send(const Message& message);
    Message Complete(Message message, int line) const;

    Flow RunIf(const tsql::Statement& statement);
    Flow RunWhile(const tsql::Statement& statement);
    Flow RunReturn(const tsql::Statement& statement);
    Flow RunTry(const tsql::Statement& statement);
    bool Decide(const tsql::Expression& condition);
    // A statement that does not run: its variables are there for what stands behind it.
    void Pass(const tsql::Statement& statement);
    size_t PassToJump(const tsql::StatementList& statements, size_t from);
    void BeginImplicitly(const tsql::Statement& statement);
    // Whether the jump that is under way goes to this statement or into it.
    bool LeadsTo(const tsql::Statement& statement) const;
    size_t PlaceOfJump(const tsql::StatementList& statements) const;

    Frame& frame_;
    ResultSink& sink_;
    const tsql::Label* jump_ = nullptr;  // where GOTO wants to go on
};

// The runners of the kinds, each raising SqlError. They send rows and StatementDone themselves.
void RunAlterDatabase(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunAlterIndex(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunAlterTable(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunSelect(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunDelete(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunInsert(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunTruncate(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunUpdate(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunExecute(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunSetOption(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunCreateDatabase(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunCreateTable(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunCreateView(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunCreateProcedure(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunCreateIndex(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunSchemaStatement(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunTypeStatement(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunDrop(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunDeclare(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunSetVariable(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunPrint(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunRaiseError(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunThrow(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunTransaction(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunUse(const tsql::Statement& statement, Frame& frame, ResultSink& sink);
void RunWaitFor(const tsql::Statement& statement, Frame& frame, ResultSink& sink);

void RunSelectInto(const tsql::Query& query, Frame& frame, ResultSink& sink);

// The variables of a DECLARE that does not run, null.
void DeclareOnly(const tsql::Statement& statement, Frame& frame);

// As tsql::ParseBatch; raises SqlError.
std::shared_ptr<const tsql::StatementList> ParseBatchText(const QString& text,
                                                          SessionState& session);
// The error that a syntax error means.
SqlError FromSyntaxError(const tsql::SyntaxError& error);

}  // namespace quarv::localdb::engine
