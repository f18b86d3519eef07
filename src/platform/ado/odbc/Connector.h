// Connector: opens an ODBC connection within a time limit that holds whatever the other side does.
// The driver's own limit counts from the last byte it got, and looking up a name knows none, so the
// work runs on a thread of its own which is cut off at the end.
#pragma once

#include <QString>
#include <optional>

#include "platform/ado/odbc/Diagnostics.h"
#include "platform/ado/odbc/Handle.h"

namespace quarv::ado::odbc {

struct ConnectAttempt {
    EnvironmentHandle environment;
    ConnectionHandle connection;  // open where `failure` holds nothing
    std::optional<Diagnostics> failure;
    // The limit passed; a `failure` then holds what is known, perhaps nothing.
    bool timedOut = false;
};

// `odbcString` is the driver manager's connection string; `timeout` in milliseconds, 0: none.
// `port` is the TCP port on the other side, 0 where it is not known.
ConnectAttempt Connect(const QString& odbcString, int timeout, int port);

}  // namespace quarv::ado::odbc
