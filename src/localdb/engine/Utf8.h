// Utf8: between QString and the bytes that are stored. Lone surrogates survive both ways, as three
// bytes each, so that every nvarchar value comes back as it was.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace quarv::localdb::engine {

std::string ToUtf8(QStringView text);
QString FromUtf8(std::string_view bytes);

// UTF-16 units that the text takes: what nvarchar lengths count.
size_t Utf16Length(std::string_view bytes);
// Characters: a pair of surrogates counts once.
size_t CharacterCount(std::string_view bytes);
// The longest front part of at most `units` UTF-16 units, never half a pair.
std::string_view TakeUtf16(std::string_view bytes, size_t units);
// The longest front part of at most `size` bytes that ends between characters.
std::string_view TakeBytes(std::string_view bytes, size_t size);
// Bytes of the first `characters` characters.
size_t BytesOfCharacters(std::string_view bytes, size_t characters);
// Reads one code point and steps over it; a byte out of place counts as itself.
char32_t NextCodePoint(std::string_view bytes, size_t& at);
// Writes 1..4 bytes; returns how many.
size_t PutCodePoint(char32_t code, char* out);
std::string_view WithoutTrailingBlanks(std::string_view bytes);

}  // namespace quarv::localdb::engine
