// Server: everything that sessions share: the data directory with one SQLite file a database, the
// catalogue, the server's name and version. Outlives its sessions; its members may be called from
// any thread.
#pragma once

#include <QString>
#include <memory>

#include "localdb/engine/Session.h"

namespace quarv::localdb::engine {

class SystemObjects;

class Server {
  public:
    virtual ~Server() = default;

    // A session in database "master". `login` is what SUSER_NAME() gives.
    virtual std::unique_ptr<Session> NewSession(const QString& login) = 0;
    virtual bool HasDatabase(const QString& name) const = 0;

    // For example "16.00.1000".
    static QString ProductVersion();
    // What @@VERSION tells, and DBMS_VER of sp_server_info.
    static QString VersionText();
    // What @@SERVERNAME tells: the machine's name.
    static QString Name();

    // Opens the data directory, making it (mode 0700) and database "master" where they are missing.
    // `objects` are the system's views and procedures; catalog/OpenServer.h opens a server with
    // all of them. Raises SqlError where a file cannot be made, opened or is damaged.
    static std::unique_ptr<Server> Open(const QString& dataDirectory,
                                        std::unique_ptr<const SystemObjects> objects);
};

}  // namespace quarv::localdb::engine
