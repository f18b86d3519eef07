// TypeTable: what each data type code means on the wire ([MS-TDS], "Data Type Definitions"): what
// follows the code in a type's description and how its values are framed. The one place where
// codes are told apart; codecs ask it.
#pragma once

#include <cstdint>

namespace quarv::localdb::tds {

enum class TypeCode : uint8_t {
    Image = 0x22,
    Text = 0x23,
    Guid = 0x24,
    IntN = 0x26,
    Date = 0x28,
    Time = 0x29,
    DateTime2 = 0x2A,
    DateTimeOffset = 0x2B,
    Int1 = 0x30,
    Bit = 0x32,
    Int2 = 0x34,
    Int4 = 0x38,
    SmallDateTime = 0x3A,
    Real = 0x3B,
    Money = 0x3C,
    DateTime = 0x3D,
    Float = 0x3E,
    Variant = 0x62,
    NText = 0x63,
    BitN = 0x68,
    Decimal = 0x6A,
    Numeric = 0x6C,
    FloatN = 0x6D,
    MoneyN = 0x6E,
    DateTimeN = 0x6F,
    SmallMoney = 0x7A,
    Int8 = 0x7F,
    VarBinary = 0xA5,
    VarChar = 0xA7,
    Binary = 0xAD,
    Char = 0xAF,
    NVarChar = 0xE7,
    NChar = 0xEF,
    Xml = 0xF1,
};

// How a value says where it ends, and that it is null.
enum class Framing : uint8_t {
    Fixed,       // always `size` bytes, never null
    ByteCount,   // u8 count, 0: null
    ShortCount,  // u16 count, FFFF: null; in parts (Plp) where the type's size is FFFF
    LongCount,   // u32 count, behind a text pointer in rows
    Plp,         // u64 total, then parts of u32 count each, then 0
    Variant,     // u32 count, 0: null
};

// What follows the type code.
enum class TypeDetail : uint8_t { None, Size8, Size16, Size32, PrecisionScale, Scale, SchemaFlag };

struct TypeRule {
    TypeCode code;
    Framing framing;
    TypeDetail detail;
    bool collated;   // five bytes of collation follow the detail
    uint32_t sizes;  // Fixed: the one size; ByteCount: bit n set where n bytes are a valid size
    bool parameter;  // accepted as a parameter of a procedure call
};

// Null for a code that is not in the table.
const TypeRule* FindTypeRule(uint8_t code);
const TypeRule& RuleOf(TypeCode code);

// Marks a type of (max) length in its u16 size.
constexpr uint32_t MaxSize = 0xFFFF;

// Bytes of a decimal's value, sign included, for a precision of 1 to 38.
uint8_t DecimalSize(uint8_t precision);
// Bytes of a time of day for a scale of 0 to 7.
uint8_t TimeSize(uint8_t scale);

}  // namespace quarv::localdb::tds
