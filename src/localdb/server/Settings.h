// Settings: what a running server was told, and its limits. Fixed for the server's life.
#pragma once

#include <QString>
#include <chrono>
#include <cstddef>

#include "localdb/server/Account.h"
#include "localdb/tds/Prelogin.h"

namespace quarv::localdb::server {

struct Settings {
    Account account;
    QString serverName;  // in messages
    tds::ProgramVersion version;

    size_t largestSessions = 256;
    // Connections that have not logged in yet; beyond it the oldest is closed for a new one.
    size_t largestPending = 1024;
    size_t largestLogin = size_t{16} * 1024;           // bytes of a message before login
    size_t largestRequest = size_t{64} * 1024 * 1024;  // bytes of a message after it
    std::chrono::milliseconds loginTime{10'000};       // from connecting to being logged in
    std::chrono::milliseconds idleTime{0};             // without a connection; 0: never ends
};

}  // namespace quarv::localdb::server
