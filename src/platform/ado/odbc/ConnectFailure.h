// ConnectFailure: finds the cause of a connection that could not be opened in what the driver said,
// and makes the error that tells it in plain words.
#pragma once

#include "platform/ado/ConnectionSettings.h"
#include "platform/ado/odbc/Connector.h"

namespace quarv::ado::odbc {

// `attempt` must hold a failure; `timeout` in seconds is what the connection was given.
DataError ConnectFailure(const ConnectAttempt& attempt, const ConnectionSettings& settings,
                         int timeout);

// Nothing was reached: the server's host did not take the connection.
bool IsUnreached(const ConnectAttempt& attempt);

}  // namespace quarv::ado::odbc
