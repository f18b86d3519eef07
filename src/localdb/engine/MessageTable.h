// MessageTable: every numbered message of the server with its severity, state and text
// ("Database engine errors"), each "%" a gap. A library of its own, which the server's folder
// shares.
#pragma once

#include <QStringList>

namespace quarv::localdb::engine {

struct MessageText {
    int number;
    int severity;
    int state;
    const char16_t* text;
};

// Nothing where the number is not in the table.
const MessageText* LookUpMessage(int number);
// Never fails: a number that is not in the table has the text of 50000, "%".
const MessageText& FindMessage(int number);
// The text, each gap filled with the next insert; a gap without one is left empty.
QString FillMessage(const MessageText& message, const QStringList& inserts);

}  // namespace quarv::localdb::engine
