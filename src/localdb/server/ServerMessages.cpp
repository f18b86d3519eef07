#include "localdb/server/ServerMessages.h"

#include "localdb/engine/MessageTable.h"

namespace quarv::localdb::server {

tds::ServerMessage MakeMessage(int number, const QStringList& inserts, const QString& server) {
    const engine::MessageText& entry = engine::FindMessage(number);
    tds::ServerMessage result;
    result.number = number;
    result.server = server;
    result.line = 1;
    result.state = static_cast<uint8_t>(entry.state);
    result.severity = static_cast<uint8_t>(entry.severity);
    result.text = engine::FillMessage(entry, inserts);
    return result;
}

}  // namespace quarv::localdb::server
