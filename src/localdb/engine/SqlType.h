// SqlType: a T-SQL data type with its length, precision and scale, as a column, a variable or an
// expression has it. Not every kind can be stored yet; what is not supported is refused by name.
#pragma once

#include <QString>
#include <cstdint>

namespace quarv::localdb::engine {

enum class TypeKind : uint8_t {
    Bit,
    TinyInt,
    SmallInt,
    Int,
    BigInt,
    Real,
    Float,
    SmallMoney,
    Money,
    Decimal,
    Numeric,
    Char,
    VarChar,
    NChar,
    NVarChar,
    Text,
    NText,
    Binary,
    VarBinary,
    Image,
    Date,
    Time,
    SmallDateTime,
    DateTime,
    DateTime2,
    DateTimeOffset,
    UniqueIdentifier,
    RowVersion,
    Xml,
};

struct SqlType {
    static constexpr int32_t Max = -1;  // the length of (max)

    TypeKind kind = TypeKind::Int;
    int32_t length = 0;  // characters of (n)char and (n)varchar, bytes of binaries; Max for (max)
    uint8_t precision = 0;  // 1..38 for decimal and numeric
    uint8_t scale = 0;      // 0..38 for decimal and numeric, 0..7 for the seven-digit time kinds

    // As in a declaration: "nvarchar(50)", "decimal(10,2)", "varbinary(max)".
    QString ToText() const;
    // The bare name, as information_schema gives it in data_type.
    QString Name() const;

    friend bool operator==(const SqlType&, const SqlType&) = default;
};

}  // namespace quarv::localdb::engine
