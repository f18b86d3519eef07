// TypeTable: what is fixed about each type kind: its name, its number, its place in the order of
// precedence, its class of value. And the packed form in which types are stored with columns.
#pragma once

#include <cstdint>
#include <optional>

#include "localdb/engine/SqlType.h"
#include "localdb/engine/TextOrder.h"

namespace quarv::localdb::engine {

// How values of a kind are held and stored.
enum class TypeClass : uint8_t {
    Integer,  // bit, tinyint .. bigint
    Decimal,  // decimal, numeric
    Money,    // smallmoney, money: integers in 1/10,000
    Real,     // real, float
    Text,     // (n)char, (n)varchar, (n)text, xml
    Moment,   // the date and time kinds: integers in their own unit
    Binary,   // binary, varbinary, image, rowversion: bytes
    Guid,     // uniqueidentifier: 16 bytes in the order in which they sort
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
// A type that SQL Server has and this server refuses: sql_variant, hierarchyid, ...
bool IsRefusedType(const QString& name);
// The collation that the storage compares the type's values with, `order` being that of texts; null
// where bytes or numbers do.
const char* StorageCollation(const SqlType& type, TextOrder order = TextOrder::CaseInsensitive);

// The type in 64 bits, stable on disk: number, precision, scale, length + 1.
int64_t PackType(const SqlType& type);
// Raises SqlError 945 for what PackType never makes.
SqlType UnpackType(int64_t packed);

bool IsUnicode(TypeKind kind);      // nchar, nvarchar, ntext, xml
bool IsFixedLength(TypeKind kind);  // char, nchar, binary, rowversion
bool IsOldLong(TypeKind kind);      // text, ntext, image
bool HasTimeScale(TypeKind kind);   // time, datetime2, datetimeoffset
bool IsNumber(const SqlType& type);

// Bytes that a value takes at most; -1 for (max) and xml, 16 for the old long types, as the
// catalogue's "length" columns count.
int ByteLength(const SqlType& type);
// Decimal digits and scale of the number kinds, as the rules of arithmetic see them; of moments, as
// the catalogue tells them.
int PrecisionOf(const SqlType& type);
int ScaleOf(const SqlType& type);

SqlType MakeType(TypeKind kind, int length = 0, int precision = 0, int scale = 0);
SqlType IntType();
SqlType BitType();
SqlType SysnameType();  // nvarchar(128)

}  // namespace quarv::localdb::engine
