// Quoting: text on one line between double quotes, with escapes that bring back every character.
#pragma once

#include <QString>

namespace quarv::registry {

// Control characters, line separators and the byte order mark: they would not survive every editor
// and terminal.
bool IsUnprintable(char16_t unit);

// `\"`, `\\`, `\n`, `\r`, `\t`, and `\u{H}` for the other unprintable ones.
QString Quoted(const QString& text);

}  // namespace quarv::registry
