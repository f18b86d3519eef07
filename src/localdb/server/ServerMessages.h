// ServerMessages: the messages that the server itself says (logins, damaged or unsupported
// requests), by SQL Server's numbers. Their texts are in the engine's MessageTable.
#pragma once

#include <QStringList>

#include "localdb/tds/ServerMessage.h"

namespace quarv::localdb::server {

namespace message {
constexpr int OutOfMemory = 701;
constexpr int ProtocolStream = 4002;
constexpr int CannotOpenDatabase = 4060;
constexpr int DatabaseChanged = 5701;
constexpr int LanguageChanged = 5703;
constexpr int RpcParameterType = 8009;
constexpr int TooManySessions = 17809;
constexpr int UntrustedLogin = 18452;
constexpr int LoginFailed = 18456;
constexpr int NotSupported = 40517;
}  // namespace message

// The message from the table; each "%" of its text takes the next insert.
tds::ServerMessage MakeMessage(int number, const QStringList& inserts, const QString& server);

}  // namespace quarv::localdb::server
