// StatementRunner: runs the statements of one frame, one after another, and turns what they raise
// into messages. Each kind of statement has a runner of its own.
#pragma once

#include "localdb/engine/Frame.h"
#include "localdb/engine/SqlError.h"
#include "localdb/tsql/Statement.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::tsql {
struct CreateTable;
struct Query;
}  // namespace quarv::localdb::tsql

namespace quarv::localdb::engine {

// Thrown through frames when an error ends the whole batch; its message was sent.
struct BatchAborted {};

// How a statement list went on.
enum class Flow : uint8_t { Next, Break, Continue, Return };

class StatementRunner {
  public:
    StatementRunner(Frame& frame, ResultSink& sink) : frame_(frame), sink_(sink) {}

    Flow RunAll(const tsql::StatementList& statements);
    // Sends the message of an error that lies outside every statement.
    void Report(SqlError error, int line);

  private:
    Flow RunOne(const tsql::Statement& statement);
    Flow Dispatch(const tsql::Statement& statement);
    Flow RunIf(const tsql::Statement& statement);
    Flow RunWhile(const tsql::Statement& statement);
    Flow RunReturn(const tsql::Statement& statement);
    void DeclareTable(const tsql::CreateTable& definition);
    void RunDeclare(const tsql::Statement& statement);
    void RunSetVariable(const tsql::Statement& statement);
    void RunPrint(const tsql::Statement& statement);
    void RunTransaction(const tsql::Statement& statement);
    void RunUse(const tsql::Statement& statement);
    void Done(int64_t rows = -1);

    Frame& frame_;
    ResultSink& sink_;
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
void RunDrop(const tsql::Statement& statement, Frame& frame, ResultSink& sink);

void RunSelectInto(const tsql::Query& query, Frame& frame, ResultSink& sink);

// As tsql::ParseBatch; raises SqlError.
tsql::StatementList ParseBatchText(const QString& text);
// The error that a syntax error means.
SqlError FromSyntaxError(const tsql::SyntaxError& error);

}  // namespace quarv::localdb::engine
