// ConversionJob: one conversion at work, and its parts: one function a class of target. Only
// Conversion and its parts know this.
#pragma once

#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"
#include "localdb/engine/TextArena.h"

namespace quarv::localdb::engine {

// The value is not null.
struct ConversionJob {
    const SqlValue& value;
    const SqlType& from;
    const SqlType& to;
    int style;  // or Conversion::NoStyle
    TextArena& arena;
};

namespace conversion {

[[noreturn]] void Overflow(const QString& what, const SqlType& to);
// As messages name the type of a value: decimals are "numeric".
QString SourceName(const SqlType& from);

SqlValue ToText(const ConversionJob& job);
SqlValue ToMoment(const ConversionJob& job);
SqlValue ToBinary(const ConversionJob& job);
SqlValue ToGuid(const ConversionJob& job);
SqlValue ToReal(const ConversionJob& job);

// Out of a binary, for the numbers: its last bytes as a number of `size` bytes with a sign.
int64_t IntegerOfBytes(std::string_view bytes, size_t size);
// A decimal as ToBinary writes it, its scale into `scale`. Raises SqlError 8114.
Int128 DecimalOfBytes(const ConversionJob& job, int& scale);
// A binary as text: in code page 1252 or as UTF-16, by the target; hexadecimal in styles 1 and 2.
std::string TextOfBytes(const ConversionJob& job);
// The bytes that a text is.
std::string BytesOfText(const ConversionJob& job);
// The bytes that a moment converts to, and back. Raises SqlError 8114 or 8115.
std::string BytesOfMoment(const SqlValue& value, const SqlType& type);
SqlValue MomentOfBytes(const ConversionJob& job);

}  // namespace conversion
}  // namespace quarv::localdb::engine
