#include "localdb/tds/TypeTable.h"

#include <array>
#include <cstddef>

namespace quarv::localdb::tds {

namespace {

constexpr uint32_t Sizes() {
    return 0;
}
template <typename... Rest>
constexpr uint32_t Sizes(int first, Rest... rest) {
    return (uint32_t{1} << first) | Sizes(rest...);
}

using enum TypeCode;
using F = Framing;
using D = TypeDetail;

constexpr std::array<TypeRule, 34> Rules{{
    {Int1, F::Fixed, D::None, false, 1, true},
    {Bit, F::Fixed, D::None, false, 1, true},
    {Int2, F::Fixed, D::None, false, 2, true},
    {Int4, F::Fixed, D::None, false, 4, true},
    {Int8, F::Fixed, D::None, false, 8, true},
    {Real, F::Fixed, D::None, false, 4, true},
    {Float, F::Fixed, D::None, false, 8, true},
    {SmallMoney, F::Fixed, D::None, false, 4, true},
    {Money, F::Fixed, D::None, false, 8, true},
    {SmallDateTime, F::Fixed, D::None, false, 4, true},
    {DateTime, F::Fixed, D::None, false, 8, true},
    {IntN, F::ByteCount, D::Size8, false, Sizes(1, 2, 4, 8), true},
    {BitN, F::ByteCount, D::Size8, false, Sizes(1), true},
    {FloatN, F::ByteCount, D::Size8, false, Sizes(4, 8), true},
    {MoneyN, F::ByteCount, D::Size8, false, Sizes(4, 8), true},
    {DateTimeN, F::ByteCount, D::Size8, false, Sizes(4, 8), true},
    {Guid, F::ByteCount, D::Size8, false, Sizes(16), true},
    {Decimal, F::ByteCount, D::PrecisionScale, false, Sizes(5, 9, 13, 17), true},
    {Numeric, F::ByteCount, D::PrecisionScale, false, Sizes(5, 9, 13, 17), true},
    {Date, F::ByteCount, D::None, false, Sizes(3), true},
    {Time, F::ByteCount, D::Scale, false, Sizes(3, 4, 5), true},
    {DateTime2, F::ByteCount, D::Scale, false, Sizes(6, 7, 8), true},
    {DateTimeOffset, F::ByteCount, D::Scale, false, Sizes(8, 9, 10), true},
    {VarChar, F::ShortCount, D::Size16, true, 0, true},
    {Char, F::ShortCount, D::Size16, true, 0, true},
    {NVarChar, F::ShortCount, D::Size16, true, 0, true},
    {NChar, F::ShortCount, D::Size16, true, 0, true},
    {VarBinary, F::ShortCount, D::Size16, false, 0, true},
    {Binary, F::ShortCount, D::Size16, false, 0, true},
    {Text, F::LongCount, D::Size32, true, 0, true},
    {NText, F::LongCount, D::Size32, true, 0, true},
    {Image, F::LongCount, D::Size32, false, 0, true},
    {Xml, F::Plp, D::SchemaFlag, false, 0, false},
    {Variant, F::Variant, D::Size32, false, 0, false},
}};

// Position in Rules plus one for each code; 0 where there is none.
constexpr std::array<uint8_t, 256> Index = [] {
    std::array<uint8_t, 256> index{};
    for (std::size_t i = 0; i < Rules.size(); ++i) {
        index[static_cast<uint8_t>(Rules[i].code)] = static_cast<uint8_t>(i + 1);
    }
    return index;
}();

}  // namespace

const TypeRule* FindTypeRule(uint8_t code) {
    return Index[code] == 0 ? nullptr : &Rules[Index[code] - 1u];
}

const TypeRule& RuleOf(TypeCode code) {
    return Rules[Index[static_cast<uint8_t>(code)] - 1u];
}

uint8_t DecimalSize(uint8_t precision) {
    if (precision <= 9) return 5;
    if (precision <= 19) return 9;
    return precision <= 28 ? 13 : 17;
}

uint8_t TimeSize(uint8_t scale) {
    if (scale <= 2) return 3;
    return scale <= 4 ? 4 : 5;
}

}  // namespace quarv::localdb::tds
