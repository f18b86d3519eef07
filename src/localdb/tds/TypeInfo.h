// TypeInfo: a data type as the wire describes it ([MS-TDS], "TYPE_INFO"), of a column or a
// parameter. What belongs to which code stands in TypeTable.
#pragma once

#include <array>
#include <cstdint>

#include "localdb/tds/ByteReader.h"
#include "localdb/tds/ByteWriter.h"
#include "localdb/tds/TypeTable.h"

namespace quarv::localdb::tds {

using Collation = std::array<uint8_t, 5>;

// SQL_Latin1_General_CP1_CI_AS: code page 1252.
constexpr Collation DefaultCollation{0x09, 0x04, 0xD0, 0x00, 0x34};

struct TypeInfo {
    TypeCode code = TypeCode::IntN;
    uint32_t size = 0;  // largest value in bytes; MaxSize for (max)
    uint8_t precision = 0;
    uint8_t scale = 0;
    Collation collation = DefaultCollation;

    const TypeRule& Rule() const { return RuleOf(code); }
    // Values come in parts: (max) types and xml.
    bool IsPlp() const;

    void Encode(ByteWriter& writer) const;
    // Raises TypeCode, TypeSize, OutOfBytes or Truncated.
    static TypeInfo Decode(ByteReader& reader);

    friend bool operator==(const TypeInfo&, const TypeInfo&) = default;
};

}  // namespace quarv::localdb::tds
