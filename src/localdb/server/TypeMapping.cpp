#include "localdb/server/TypeMapping.h"

#include <algorithm>
#include <array>

namespace quarv::localdb::server {

namespace {

using engine::SqlType;
using engine::TypeKind;
using tds::TypeCode;

constexpr uint32_t LargestLong = 0x7FFFFFFF;
constexpr uint32_t RowVersionSize = 8;
constexpr uint32_t RowVersionUserType = 80;

// What of a SqlType goes into the wire's size.
enum class SizeFrom : uint8_t { Constant, Length, TwiceLength, Precision };

struct Mapping {
    TypeKind kind;
    TypeCode code;
    SizeFrom from;
    uint32_t size;  // where the size is constant
};

constexpr std::array<Mapping, 29> Mappings{{
    {TypeKind::Bit, TypeCode::BitN, SizeFrom::Constant, 1},
    {TypeKind::TinyInt, TypeCode::IntN, SizeFrom::Constant, 1},
    {TypeKind::SmallInt, TypeCode::IntN, SizeFrom::Constant, 2},
    {TypeKind::Int, TypeCode::IntN, SizeFrom::Constant, 4},
    {TypeKind::BigInt, TypeCode::IntN, SizeFrom::Constant, 8},
    {TypeKind::Real, TypeCode::FloatN, SizeFrom::Constant, 4},
    {TypeKind::Float, TypeCode::FloatN, SizeFrom::Constant, 8},
    {TypeKind::SmallMoney, TypeCode::MoneyN, SizeFrom::Constant, 4},
    {TypeKind::Money, TypeCode::MoneyN, SizeFrom::Constant, 8},
    {TypeKind::Decimal, TypeCode::Decimal, SizeFrom::Precision, 0},
    {TypeKind::Numeric, TypeCode::Numeric, SizeFrom::Precision, 0},
    {TypeKind::Char, TypeCode::Char, SizeFrom::Length, 0},
    {TypeKind::VarChar, TypeCode::VarChar, SizeFrom::Length, 0},
    {TypeKind::NChar, TypeCode::NChar, SizeFrom::TwiceLength, 0},
    {TypeKind::NVarChar, TypeCode::NVarChar, SizeFrom::TwiceLength, 0},
    {TypeKind::Text, TypeCode::Text, SizeFrom::Constant, LargestLong},
    {TypeKind::NText, TypeCode::NText, SizeFrom::Constant, LargestLong - 1},
    {TypeKind::Binary, TypeCode::Binary, SizeFrom::Length, 0},
    {TypeKind::VarBinary, TypeCode::VarBinary, SizeFrom::Length, 0},
    {TypeKind::Image, TypeCode::Image, SizeFrom::Constant, LargestLong},
    {TypeKind::Date, TypeCode::Date, SizeFrom::Constant, 3},
    {TypeKind::Time, TypeCode::Time, SizeFrom::Constant, 5},
    {TypeKind::SmallDateTime, TypeCode::DateTimeN, SizeFrom::Constant, 4},
    {TypeKind::DateTime, TypeCode::DateTimeN, SizeFrom::Constant, 8},
    {TypeKind::DateTime2, TypeCode::DateTime2, SizeFrom::Constant, 8},
    {TypeKind::DateTimeOffset, TypeCode::DateTimeOffset, SizeFrom::Constant, 10},
    {TypeKind::UniqueIdentifier, TypeCode::Guid, SizeFrom::Constant, 16},
    {TypeKind::RowVersion, TypeCode::Binary, SizeFrom::Constant, RowVersionSize},
    {TypeKind::Xml, TypeCode::Xml, SizeFrom::Constant, tds::MaxSize},
}};

// The position in Mappings of each kind; the first one for a kind that is not there.
constexpr std::array<uint8_t, 256> Index = [] {
    std::array<uint8_t, 256> index{};
    for (size_t i = 0; i < Mappings.size(); ++i) {
        index[static_cast<uint8_t>(Mappings[i].kind)] = static_cast<uint8_t>(i);
    }
    return index;
}();

const Mapping& MappingOf(TypeKind kind) {
    return Mappings[Index[static_cast<uint8_t>(kind)]];
}

uint32_t SizeOf(const Mapping& mapping, const SqlType& type) {
    const auto length = static_cast<uint32_t>(type.length);
    switch (mapping.from) {
        case SizeFrom::Constant:
            return mapping.size;
        case SizeFrom::Precision:
            return tds::DecimalSize(type.precision);
        case SizeFrom::Length:
            return type.length == SqlType::Max ? tds::MaxSize : length;
        case SizeFrom::TwiceLength:
            return type.length == SqlType::Max ? tds::MaxSize : 2 * length;
    }
    return mapping.size;
}

// The kinds whose nullable and fixed forms share a meaning: by fixed code, or code and size.
TypeKind KindOfSized(const tds::TypeInfo& type) {
    switch (type.code) {
        case TypeCode::IntN:
            if (type.size == 1) return TypeKind::TinyInt;
            if (type.size == 2) return TypeKind::SmallInt;
            return type.size == 4 ? TypeKind::Int : TypeKind::BigInt;
        case TypeCode::FloatN:
            return type.size == 4 ? TypeKind::Real : TypeKind::Float;
        case TypeCode::MoneyN:
            return type.size == 4 ? TypeKind::SmallMoney : TypeKind::Money;
        default:
            return type.size == 4 ? TypeKind::SmallDateTime : TypeKind::DateTime;
    }
}

struct FixedKind {
    TypeCode code;
    TypeKind kind;
};

constexpr std::array<FixedKind, 11> FixedKinds{{
    {TypeCode::Int1, TypeKind::TinyInt},
    {TypeCode::Bit, TypeKind::Bit},
    {TypeCode::Int2, TypeKind::SmallInt},
    {TypeCode::Int4, TypeKind::Int},
    {TypeCode::Int8, TypeKind::BigInt},
    {TypeCode::Real, TypeKind::Real},
    {TypeCode::Float, TypeKind::Float},
    {TypeCode::SmallMoney, TypeKind::SmallMoney},
    {TypeCode::Money, TypeKind::Money},
    {TypeCode::SmallDateTime, TypeKind::SmallDateTime},
    {TypeCode::DateTime, TypeKind::DateTime},
}};

// Clients send long parameters as the long types of old; as parameters these say nothing that
// their (max) successors do not.
struct Successor {
    TypeKind old;
    TypeKind now;
};

constexpr std::array<Successor, 3> Successors{{
    {TypeKind::Text, TypeKind::VarChar},
    {TypeKind::NText, TypeKind::NVarChar},
    {TypeKind::Image, TypeKind::VarBinary},
}};

TypeKind KindOf(const tds::TypeInfo& type) {
    if (type.code == TypeCode::IntN || type.code == TypeCode::FloatN ||
        type.code == TypeCode::MoneyN || type.code == TypeCode::DateTimeN) {
        return KindOfSized(type);
    }
    for (const FixedKind& fixed : FixedKinds) {
        if (fixed.code == type.code) return fixed.kind;
    }
    for (const Mapping& mapping : Mappings) {
        if (mapping.code == type.code) return mapping.kind;
    }
    throw tds::ProtocolError(tds::Fault::ParameterType, 0);
}

}  // namespace

tds::TypeInfo WireTypeOf(const SqlType& type) {
    const Mapping& mapping = MappingOf(type.kind);
    tds::TypeInfo wire;
    wire.code = mapping.code;
    wire.size = SizeOf(mapping, type);
    wire.precision = type.precision;
    wire.scale = type.scale;
    return wire;
}

tds::ColumnInfo WireColumnOf(const engine::Column& column) {
    tds::ColumnInfo wire;
    wire.name = column.name;
    wire.type = WireTypeOf(column.type);
    if (column.type.kind == TypeKind::RowVersion) wire.userType = RowVersionUserType;
    if (column.nullable) wire.flags |= tds::ColumnInfo::Nullable;
    if (column.identity) {
        wire.flags |= tds::ColumnInfo::Identity;
    } else {
        wire.flags |= column.computed ? tds::ColumnInfo::Computed : tds::ColumnInfo::Updatable;
    }
    return wire;
}

SqlType EngineTypeOf(const tds::TypeInfo& type) {
    SqlType result;
    result.kind = KindOf(type);
    for (const Successor& successor : Successors) {
        if (successor.old != result.kind) continue;
        result.kind = successor.now;
        result.length = SqlType::Max;
        return result;
    }
    result.precision = type.precision;
    result.scale = type.scale;
    const SizeFrom from = MappingOf(result.kind).from;
    if (from == SizeFrom::Length || from == SizeFrom::TwiceLength) {
        const uint32_t units = from == SizeFrom::Length ? type.size : type.size / 2;
        // An empty value may announce no room at all; no type is that short.
        result.length =
            type.size == tds::MaxSize ? SqlType::Max : static_cast<int32_t>(std::max(units, 1u));
    }
    return result;
}

}  // namespace quarv::localdb::server
