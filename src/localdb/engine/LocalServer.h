// LocalServer: the engine's Server: owns the list of databases and the system's objects, and
// numbers the sessions.
#pragma once

#include <atomic>

#include "localdb/engine/DatabaseList.h"
#include "localdb/engine/Server.h"
#include "localdb/engine/SystemObjects.h"

namespace quarv::localdb::engine {

class LocalServer : public Server {
  public:
    LocalServer(const QString& dataDirectory, std::unique_ptr<const SystemObjects> objects);

    std::unique_ptr<Session> NewSession(const QString& login) override;
    bool HasDatabase(const QString& name) const override;

  private:
    std::unique_ptr<const SystemObjects> objects_;
    DatabaseList databases_;
    std::atomic<int> nextSession_;
};

}  // namespace quarv::localdb::engine
