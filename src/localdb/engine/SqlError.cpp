#include "localdb/engine/SqlError.h"

#include "localdb/engine/MessageTable.h"

namespace quarv::localdb::engine {

namespace {

Message Fill(int number, const QStringList& inserts, int line) {
    const MessageText& entry = FindMessage(number);
    Message message;
    message.number = number;
    message.severity = entry.severity;
    message.state = entry.state;
    message.line = line;
    message.text = FillMessage(entry, inserts);
    return message;
}

}  // namespace

SqlError::SqlError(int number, const QStringList& inserts, int line)
    : SqlError(Fill(number, inserts, line)) {}

SqlError::SqlError(Message message)
    : Error(message.number, message.text), message_(std::move(message)) {}

}  // namespace quarv::localdb::engine
