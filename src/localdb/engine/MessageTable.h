// MessageTable: every numbered message of the server with its severity, state and text
// ("Database engine errors"), each "%" a gap.
#pragma once

namespace quarv::localdb::engine {

struct MessageText {
    int number;
    int severity;
    int state;
    const char16_t* text;
};

// Never fails: a number that is not in the table has the text of 50000, "%".
const MessageText& FindMessage(int number);

}  // namespace quarv::localdb::engine
