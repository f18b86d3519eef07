// BIT_COUNT, LEFT_SHIFT and RIGHT_SHIFT: integers as rows of bits.
#include <array>
#include <bit>

#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

int WidthOf(const SqlType& type) {
    return FactsOf(type.kind).bytes * 8;
}

// The value's own bits, without those that a wider type adds in front of a negative one.
uint64_t BitsOf(int64_t value, int width) {
    const auto bits = static_cast<uint64_t>(value);
    return width == 64 ? bits : bits & ((uint64_t{1} << width) - 1);
}

int64_t NumberOf(uint64_t bits, const SqlType& type) {
    switch (type.kind) {
        case TypeKind::TinyInt:
            return static_cast<int64_t>(bits & 0xFF);
        case TypeKind::SmallInt:
            return static_cast<int16_t>(bits);
        case TypeKind::Int:
            return static_cast<int32_t>(bits);
        default:
            return static_cast<int64_t>(bits);
    }
}

// A negative amount shifts the other way; what leaves the value is lost.
template <int Direction>
SqlValue Shift(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const int width = WidthOf(call.type);
    const uint64_t bits = BitsOf(a[0].integer, width);
    const bool left = (a[1].integer >= 0) == (Direction > 0);
    const uint64_t amount = a[1].integer < 0 ? uint64_t{0} - static_cast<uint64_t>(a[1].integer)
                                             : static_cast<uint64_t>(a[1].integer);
    if (amount >= static_cast<uint64_t>(width)) return SqlValue::Integer(0);
    return SqlValue::Integer(NumberOf(left ? bits << amount : bits >> amount, call.type));
}

void CheckInteger(const BoundExpression& argument, int number, const QString& function) {
    const SqlType& type = argument.type;
    if (ClassOf(type) == TypeClass::Integer && type.kind != TypeKind::Bit) return;
    throw SqlError(8116, {type.Name(), QString::number(number), function});
}

template <int Direction>
BoundPtr BindShift(Arguments arguments) {
    const QString name =
        Direction > 0 ? QStringLiteral("left_shift") : QStringLiteral("right_shift");
    if (ClassOf(arguments[0]->type) == TypeClass::Binary) {
        throw SqlError(40517, {name.toUpper() + QStringLiteral(" of a binary value")});
    }
    CheckInteger(*arguments[0], 1, name);
    CheckInteger(*arguments[1], 2, name);
    const SqlType type = arguments[0]->type;
    return MakeCall(Shift<Direction>, type, std::move(arguments));
}

SqlValue BitCount(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const SqlType& type = call.parts[0]->type;
    int64_t count = 0;
    if (ClassOf(type) == TypeClass::Integer) {
        count = std::popcount(BitsOf(a[0].integer, type.kind == TypeKind::Bit ? 1 : WidthOf(type)));
    } else {
        for (const char byte : a[0].text) count += std::popcount(static_cast<unsigned char>(byte));
    }
    return SqlValue::Integer(count);
}

BoundPtr BindBitCount(Arguments arguments) {
    const SqlType& type = arguments[0]->type;
    const bool bits = ClassOf(type) == TypeClass::Integer ||
                      (ClassOf(type) == TypeClass::Binary && !IsOldLong(type.kind) &&
                       type.length != SqlType::Max);
    if (!bits) {
        throw SqlError(8116, {type.Name(), QStringLiteral("1"), QStringLiteral("bit_count")});
    }
    return MakeCall(BitCount, MakeType(TypeKind::BigInt), std::move(arguments));
}

}  // namespace

std::span<const FunctionEntry> BitFunctions() {
    static constexpr std::array<FunctionEntry, 3> Table = {{
        {u"bit_count", 1, 1, BindBitCount},
        {u"left_shift", 2, 2, BindShift<1>},
        {u"right_shift", 2, 2, BindShift<-1>},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
