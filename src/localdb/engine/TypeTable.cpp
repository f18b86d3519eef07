#include "localdb/engine/TypeTable.h"

#include <algorithm>
#include <array>

#include "localdb/engine/CollationNames.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

using K = TypeKind;
using C = TypeClass;

constexpr std::array<TypeFacts, 29> Table = {{
    {K::Bit, u"bit", 104, 21, C::Integer, 1, 1, 0},
    {K::TinyInt, u"tinyint", 48, 20, C::Integer, 1, 3, 0},
    {K::SmallInt, u"smallint", 52, 19, C::Integer, 2, 5, 0},
    {K::Int, u"int", 56, 18, C::Integer, 4, 10, 0},
    {K::BigInt, u"bigint", 127, 17, C::Integer, 8, 19, 0},
    {K::Real, u"real", 59, 13, C::Real, 4, 24, 0},
    {K::Float, u"float", 62, 12, C::Real, 8, 53, 0},
    {K::SmallMoney, u"smallmoney", 122, 16, C::Money, 4, 10, 4},
    {K::Money, u"money", 60, 15, C::Money, 8, 19, 4},
    {K::Decimal, u"decimal", 106, 14, C::Decimal, 0, 0, 0},
    {K::Numeric, u"numeric", 108, 14, C::Decimal, 0, 0, 0},
    {K::Char, u"char", 175, 30, C::Text, 0, 0, 0},
    {K::VarChar, u"varchar", 167, 29, C::Text, 0, 0, 0},
    {K::NChar, u"nchar", 239, 28, C::Text, 0, 0, 0},
    {K::NVarChar, u"nvarchar", 231, 27, C::Text, 0, 0, 0},
    {K::Text, u"text", 35, 23, C::Text, 16, 0, 0},
    {K::NText, u"ntext", 99, 22, C::Text, 16, 0, 0},
    {K::Binary, u"binary", 173, 32, C::Binary, 0, 0, 0},
    {K::VarBinary, u"varbinary", 165, 31, C::Binary, 0, 0, 0},
    {K::Image, u"image", 34, 24, C::Binary, 16, 0, 0},
    {K::Date, u"date", 40, 10, C::Moment, 3, 10, 0},
    {K::Time, u"time", 41, 11, C::Moment, 5, 16, 7},
    {K::SmallDateTime, u"smalldatetime", 58, 9, C::Moment, 4, 16, 0},
    {K::DateTime, u"datetime", 61, 8, C::Moment, 8, 23, 3},
    {K::DateTime2, u"datetime2", 42, 7, C::Moment, 8, 27, 7},
    {K::DateTimeOffset, u"datetimeoffset", 43, 6, C::Moment, 10, 34, 7},
    {K::UniqueIdentifier, u"uniqueidentifier", 36, 26, C::Guid, 16, 0, 0},
    {K::RowVersion, u"timestamp", 189, 25, C::Binary, 8, 0, 0},
    {K::Xml, u"xml", 241, 5, C::Text, 0, 0, 0},
}};

constexpr bool InOrder() {
    for (size_t i = 0; i < Table.size(); ++i) {
        if (static_cast<size_t>(Table[i].kind) != i) return false;
    }
    return true;
}
static_assert(InOrder());

struct Synonym {
    QStringView name;
    TypeKind kind;
};

constexpr std::array<QStringView, 6> RefusedTypes = {u"sql_variant", u"hierarchyid", u"geometry",
                                                     u"geography",   u"cursor",      u"table"};

// "Data type synonyms (Transact-SQL)".
constexpr std::array<Synonym, 4> Synonyms = {{{u"integer", K::Int},
                                              {u"dec", K::Decimal},
                                              {u"rowversion", K::RowVersion},
                                              {u"sysname", K::NVarChar}}};

}  // namespace

const TypeFacts& FactsOf(TypeKind kind) {
    return Table[static_cast<size_t>(kind)];
}

std::optional<TypeKind> FindTypeKind(const QString& name) {
    for (const TypeFacts& facts : Table) {
        if (name.compare(QStringView(facts.name), Qt::CaseInsensitive) == 0) return facts.kind;
    }
    for (const Synonym& synonym : Synonyms) {
        if (synonym.name.compare(name, Qt::CaseInsensitive) == 0) return synonym.kind;
    }
    return std::nullopt;
}

bool IsRefusedType(const QString& name) {
    return std::any_of(RefusedTypes.begin(), RefusedTypes.end(), [&name](QStringView refused) {
        return refused.compare(name, Qt::CaseInsensitive) == 0;
    });
}

const char* StorageCollation(const SqlType& type, TextOrder order) {
    if (ClassOf(type) == C::Text) return StorageName(order);
    return type.kind == K::DateTimeOffset ? "tsql_offset" : nullptr;
}

int64_t PackType(const SqlType& type) {
    return int64_t{FactsOf(type.kind).number} | int64_t{type.precision} << 8 |
           int64_t{type.scale} << 16 | (int64_t{type.length} + 1) << 24;
}

SqlType UnpackType(int64_t packed) {
    for (const TypeFacts& facts : Table) {
        if (facts.number == (packed & 0xFF)) {
            return {facts.kind, static_cast<int32_t>((packed >> 24) - 1),
                    static_cast<uint8_t>(packed >> 8), static_cast<uint8_t>(packed >> 16)};
        }
    }
    throw SqlError(945, {QString()});
}

bool IsUnicode(TypeKind kind) {
    return kind == K::NChar || kind == K::NVarChar || kind == K::NText || kind == K::Xml;
}

bool IsFixedLength(TypeKind kind) {
    return kind == K::NChar || kind == K::Char || kind == K::Binary || kind == K::RowVersion;
}

bool IsOldLong(TypeKind kind) {
    return kind == K::Text || kind == K::NText || kind == K::Image;
}

bool HasTimeScale(TypeKind kind) {
    return kind == K::Time || kind == K::DateTime2 || kind == K::DateTimeOffset;
}

bool IsNumber(const SqlType& type) {
    return ClassOf(type) <= C::Real;
}

int ByteLength(const SqlType& type) {
    if (ClassOf(type) == C::Decimal) {
        return type.precision <= 9 ? 5 : type.precision <= 19 ? 9 : type.precision <= 28 ? 13 : 17;
    }
    if (HasTimeScale(type.kind)) {
        return FactsOf(type.kind).bytes - (type.scale <= 2 ? 2 : type.scale <= 4 ? 1 : 0);
    }
    const int fixed = FactsOf(type.kind).bytes;
    if (fixed != 0) return fixed;
    if (type.length == SqlType::Max) return -1;
    return IsUnicode(type.kind) ? type.length * 2 : type.length;
}

int PrecisionOf(const SqlType& type) {
    if (ClassOf(type) == C::Decimal) return type.precision;
    const int digits = FactsOf(type.kind).precision;
    if (!HasTimeScale(type.kind)) return digits;
    // Without a fraction there is no point either.
    return digits - (type.scale == 0 ? 8 : 7 - type.scale);
}

int ScaleOf(const SqlType& type) {
    if (ClassOf(type) == C::Decimal || HasTimeScale(type.kind)) return type.scale;
    return FactsOf(type.kind).scale;
}

SqlType MakeType(TypeKind kind, int length, int precision, int scale) {
    return {kind, length, static_cast<uint8_t>(precision), static_cast<uint8_t>(scale)};
}

SqlType IntType() {
    return MakeType(K::Int);
}
SqlType BitType() {
    return MakeType(K::Bit);
}
SqlType SysnameType() {
    return MakeType(K::NVarChar, 128);
}

}  // namespace quarv::localdb::engine
