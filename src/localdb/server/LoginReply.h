// LoginReply: what a client hears when it knocks: the reply to its prelogin, the reply that lets it
// in, and the reply that does not.
#pragma once

#include <cstdint>

#include "localdb/server/Settings.h"
#include "localdb/tds/Dialect.h"
#include "localdb/tds/Login7.h"
#include "localdb/tds/PacketWriter.h"
#include "localdb/tds/ServerMessage.h"

namespace quarv::localdb::server {

// The message of a reply to a prelogin, ended.
void WritePreloginReply(tds::PacketWriter& writer, const tds::ProgramVersion& version);

// The packet size that a client gets for its wish; 0 wishes for the default.
uint16_t PacketSizeFor(uint32_t wish);

// The messages that refuse a login, ended.
void WriteLoginRefusal(tds::PacketWriter& writer, std::span<const tds::ServerMessage> messages,
                       tds::Dialect dialect);

// The message that lets a client in, ended; what follows goes in packets of `packetSize`.
void WriteLoginReply(tds::PacketWriter& writer, const Settings& settings, const QString& database,
                     uint32_t tdsVersion, uint16_t packetSize);

// Why this login cannot be let in, whoever it is: a version or a feature that is not served. An
// empty text: nothing against it. `message` receives what the client is told.
QString ObjectionTo(const tds::Login7& login, const Settings& settings,
                    tds::ServerMessage& message);

}  // namespace quarv::localdb::server
