// ClientSession: one logged-in client: opens its database, then runs its requests one after another
// through an engine session, until it goes. Lives on a thread of its own.
#pragma once

#include <memory>

#include "localdb/engine/Server.h"
#include "localdb/server/ClientStream.h"
#include "localdb/server/Log.h"
#include "localdb/server/ReplySink.h"
#include "localdb/server/Settings.h"
#include "localdb/tds/Dialect.h"
#include "localdb/tds/Login7.h"
#include "localdb/tds/RpcRequest.h"

namespace quarv::localdb::server {

class ClientSession {
  public:
    // The references must outlive it.
    ClientSession(Socket socket, std::span<const std::byte> early, tds::Login7 login,
                  const Settings& settings, engine::Server& engine, Log& log);
    ~ClientSession();

    // Returns when the client has gone or must go; raises nothing.
    void Run();
    // From any thread: makes Run return soon.
    void Interrupt() const { stream_.Interrupt(); }

  private:
    bool LogIn();
    void RefuseDatabase(const QString& database);
    void Serve();
    void Handle(const tds::Message& message);
    void Dispatch(const tds::Message& message, ReplySink& sink);
    void RunBatch(const tds::Message& message, ReplySink& sink);
    void RunCalls(const tds::Message& message);
    void RunCall(const tds::RpcCall& call, const std::vector<engine::Argument>& arguments,
                 ReplySink& sink);
    void RunTransactionRequest(const tds::Message& message, ReplySink& sink);
    void ResetWhereAsked(const tds::Message& message);
    void RefuseRequest(int number, const QString& what);
    void AcknowledgeAttention();
    ReplySink NewSink(ReplySink::Form form, std::deque<uint16_t> outputs = {});

    ClientStream stream_;
    tds::Login7 login_;
    tds::Dialect dialect_;
    const Settings& settings_;
    engine::Server& engine_;
    Log& log_;
    std::unique_ptr<engine::Session> session_;
    bool inTransaction_ = false;
};

}  // namespace quarv::localdb::server
