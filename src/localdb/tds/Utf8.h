// UTF-8 text on its way to the wire, transcoded straight into a writer. Damaged UTF-8 never stops
// it: every byte that begins a character yields exactly the units that Utf16Length counts for it,
// U+FFFD where its continuation is wrong; stray continuation bytes yield nothing.
#pragma once

#include <cstddef>
#include <string_view>

#include "localdb/tds/ByteWriter.h"

namespace quarv::localdb::tds {

// UTF-16 units that the text takes; also its bytes in a single-byte code page, where a character
// beyond the basic plane counts as two.
size_t Utf16Length(std::string_view utf8);

// Writes 2 * Utf16Length bytes.
void WriteUtf8AsUtf16(ByteWriter& writer, std::string_view utf8);

// Writes Utf16Length bytes; "?" for each unit that the code page lacks.
void WriteUtf8AsCp1252(ByteWriter& writer, std::string_view utf8);

}  // namespace quarv::localdb::tds
