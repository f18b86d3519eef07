// Character and binary values on their way out, framed for each of their three forms: short (up to
// 8,000 bytes), (max), and the long types of old. Text comes as UTF-8. Their contents are read with
// TextOfUtf16 and TextOfCp1252.
#pragma once

#include <span>
#include <string_view>

#include "localdb/tds/Frames.h"
#include "localdb/tds/Utf8.h"

namespace quarv::localdb::tds {

enum class StringForm : uint8_t { Short, Plp, Long };

// As UTF-16: nchar, nvarchar, ntext, xml.
void WriteWide(ByteWriter& writer, StringForm form, std::string_view utf8);
// In code page 1252: char, varchar, text.
void WriteNarrow(ByteWriter& writer, StringForm form, std::string_view utf8);
// binary, varbinary, image.
void WriteBinary(ByteWriter& writer, StringForm form, std::span<const std::byte> bytes);

// How the values of a ShortCount, LongCount or Plp type are framed.
StringForm FormOf(const TypeInfo& type);

}  // namespace quarv::localdb::tds
