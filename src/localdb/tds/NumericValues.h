// The contents of numeric values, encode beside decode ([MS-TDS], "Data Type Definitions").
// Writers put the u8 count of a ...N type before the value; readers take the content alone and
// raise ValueLength where its size is none of the type's.
#pragma once

#include <cstdint>
#include <span>

#include "base/Decimal.h"
#include "localdb/tds/ByteWriter.h"

namespace quarv::localdb::tds {

// `size` is 1, 2, 4 or 8; one byte is unsigned (tinyint). Bits are integers of one byte.
void WriteInteger(ByteWriter& writer, uint32_t size, int64_t value);
int64_t ReadInteger(std::span<const std::byte> content);

// `size` 4 is real, 8 is float.
void WriteFloat(ByteWriter& writer, uint32_t size, double value);
double ReadFloat(std::span<const std::byte> content);

// In 1/10,000. `size` 4 is smallmoney, 8 is money.
void WriteMoney(ByteWriter& writer, uint32_t size, int64_t value);
int64_t ReadMoney(std::span<const std::byte> content);

// `size` is DecimalSize of the type's precision.
void WriteDecimal(ByteWriter& writer, uint32_t size, UInt128 magnitude, bool negative);
// Raises ValueTooLong beyond 38 digits.
Decimal ReadDecimal(std::span<const std::byte> content, uint8_t scale);

}  // namespace quarv::localdb::tds
