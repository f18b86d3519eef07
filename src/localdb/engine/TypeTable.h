// TypeTable: what is fixed about each type kind: its name, its number, its place in the order of
// precedence, its class of value. And the packed form in which types are stored with columns.
#pragma once

#include <cstdint>
#include <optional>

#include "localdb/engine/SqlType.h"

namespace quarv::localdb::engine {

// How values of a kind are held and stored.
enum class TypeClass : uint8_t {
    Integer,  // bit, tinyint .. bigint
    Decimal,  // decimal, numeric
    Money,    // smallmoney, money: integers in 1/10,000
    Real,     // real, float
    Text,     // char, varchar, nchar, nvarchar
    Moment,   // date, smalldatetime, datetime: integers in their own unit
    Other,    // named in the table, but not to be stored yet
};

struct TypeFacts {
    TypeKind kind;
    const char16_t* name;
    uint8_t number;      // system_type_id of sys.types
    uint8_t precedence;  // "Data type precedence (Transact-SQL)"; 1 is the highest
    TypeClass cls;
    uint8_t bytes;      // of a value; 0 where it depends
    uint8_t precision;  // decimal digits of the number kinds, else 0
    uint8_t scale;
};

const TypeFacts& FactsOf(TypeKind kind);
inline TypeClass ClassOf(const SqlType& type) {
    return FactsOf(type.kind).cls;
}
// By the bare name in any letter case, synonyms ("integer", "dec") included.
std::optional<TypeKind> FindTypeKind(const QString& name);

// The type in 64 bits, stable on disk: number, precision, scale, length + 1.
int64_t PackType(const SqlType& type);
// Raises SqlError 945 for what PackType never makes.
SqlType UnpackType(int64_t packed);

bool IsUnicode(TypeKind kind);      // nchar, nvarchar
bool IsFixedLength(TypeKind kind);  // char, nchar
bool IsNumber(const SqlType& type);

// Bytes that a value takes at most; -1 for (max), as the catalogue's "length" columns count.
int ByteLength(const SqlType& type);
// Decimal digits and scale of the number kinds, as the rules of arithmetic see them.
int PrecisionOf(const SqlType& type);
int ScaleOf(const SqlType& type);

SqlType MakeType(TypeKind kind, int length = 0, int precision = 0, int scale = 0);
SqlType IntType();
SqlType BitType();
SqlType SysnameType();  // nvarchar(128)

}  // namespace quarv::localdb::engine
