// Session: one logged-in client's state in the engine (current database, options, temporary
// objects) and the way in to run its requests. One thread at a time; owned by the server's session.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "localdb/engine/ResultSink.h"

namespace quarv::localdb::engine {

class Server;

// A parameter of a procedure call that came over the wire: its value is an owned literal.
struct Argument {
    QString name;  // with its "@"; empty for a positional one
    SqlType type;
    bool null = false;
    bool output = false;
    bool isDefault = false;  // the client asked for the parameter's own default
    QString text;            // character kinds; numbers and dates in T-SQL literal form
};

class Session {
  public:
    virtual ~Session() = default;

    virtual QString Database() const = 0;
    // Makes `name` current without a message. Raises SqlError 911.
    virtual void UseDatabase(const QString& name) = 0;

    // Runs a whole batch. Errors go to the sink as messages, each followed by the failed
    // StatementDone; nothing is raised but std::bad_alloc. Once the sink says that it is cancelled
    // the running statement is undone and the batch ends without a further StatementDone.
    virtual void RunBatch(const QString& sql, ResultSink& sink) = 0;

    // Runs a procedure by name ("db..name" and "[db].schema.name" included), as EXEC does, and
    // sends its return status. Errors as RunBatch.
    virtual void RunProcedure(const QString& name, const std::vector<Argument>& arguments,
                              ResultSink& sink) = 0;

    // What HOST_NAME() and APP_NAME() tell: the client's own words. Reset keeps them.
    virtual void SetClient(const QString& hostName, const QString& appName) = 0;

    // The wire's own transaction requests; as BEGIN, COMMIT, ROLLBACK and SAVE TRANSACTION in a
    // batch. An empty name is none. `isolation` is the wire's number of the level that is set first
    // (1 READ UNCOMMITTED .. 5 SNAPSHOT); 0 leaves it.
    virtual void BeginTransaction(ResultSink& sink, const QString& name = {},
                                  int isolation = 0) = 0;
    virtual void CommitTransaction(ResultSink& sink) = 0;
    virtual void RollbackTransaction(ResultSink& sink, const QString& name = {}) = 0;
    virtual void SaveTransaction(ResultSink& sink, const QString& name) = 0;

    // Rolls back what is open and forgets options, temporary and prepared things: the session is
    // as after its login, in `database`. Raises as UseDatabase.
    virtual void Reset(const QString& database) = 0;

    // @@SPID: 51 and up.
    virtual int Id() const = 0;
};

}  // namespace quarv::localdb::engine
