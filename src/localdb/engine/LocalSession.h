// LocalSession: the engine's Session: runs batches, procedure calls and transaction requests of one
// client over its own state.
#pragma once

#include "localdb/engine/Session.h"
#include "localdb/engine/SessionState.h"

namespace quarv::localdb::engine {

class Frame;
struct CallArgument;

class LocalSession : public Session {
  public:
    // In database "master". The list and the objects outlive the session.
    LocalSession(DatabaseList& databases, const SystemObjects& objects, const QString& login,
                 int id);
    ~LocalSession() override;

    QString Database() const override;
    void UseDatabase(const QString& name) override;
    void RunBatch(const QString& sql, ResultSink& sink) override;
    void RunProcedure(const QString& name, const std::vector<Argument>& arguments,
                      ResultSink& sink) override;
    void SetClient(const QString& hostName, const QString& appName) override;
    void BeginTransaction(ResultSink& sink, const QString& name, int isolation) override;
    void CommitTransaction(ResultSink& sink) override;
    void RollbackTransaction(ResultSink& sink, const QString& name) override;
    void SaveTransaction(ResultSink& sink, const QString& name) override;
    void Reset(const QString& database) override;
    int Id() const override;

  private:
    // Runs `body` with the sink's wish to cancel in force; what it raises becomes messages.
    template <class Body>
    void Guarded(ResultSink& sink, Body body);

    void SetIsolation(int level, Frame& frame);

    SessionState state_;
};

}  // namespace quarv::localdb::engine
