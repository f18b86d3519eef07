// ServeCommand: a server from its opening to its end, in the foreground of this process.
#pragma once

#include <functional>

#include "localdb/server/EngineAccess.h"
#include "localdb/server/ListenAddress.h"
#include "localdb/server/Log.h"
#include "localdb/server/Settings.h"

namespace quarv::localdb::server {

struct ServeJob {
    QString dataDirectory;
    ListenAddress listen;
    Account account;
    bool sample = false;
    std::chrono::milliseconds idleTime{0};  // 0: no end of its own
};

// Serves until SIGTERM, SIGINT or the idle time ends it. `ready` is called once, when clients can
// connect, and `ending` before the last session ends. Raises Error.
void Serve(const ServeJob& job, const EngineAccess& engine, Log& log,
           const std::function<void(const ListenAddress&)>& ready,
           const std::function<void()>& ending);

// The first line of the file. Raises ServerError PasswordFile, for an empty one too.
QString ReadPasswordFile(const QString& path);

// "16.00.1000" as major, minor and build.
tds::ProgramVersion ParseVersion(const QString& text);

}  // namespace quarv::localdb::server
