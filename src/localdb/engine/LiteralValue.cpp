#include "localdb/engine/LiteralValue.h"

#include <limits>

#include "localdb/engine/Conversion.h"
#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TextNumber.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

[[noreturn]] void Overflow(const tsql::Literal& literal, const char16_t* type) {
    throw SqlError(8115, {QStringLiteral("expression"), QString::fromUtf16(type)}, literal.line);
}

// The precision is the number of digits written, leading zeros aside.
BoundPtr DecimalLiteral(const tsql::Literal& literal) {
    const std::string text = ToUtf8(literal.text);
    const size_t point = text.find('.');
    const int scale = point == std::string::npos ? 0 : static_cast<int>(text.size() - point - 1);
    size_t first = text.find_first_not_of('0');
    if (first == std::string::npos) first = text.size();
    const size_t wholeEnd = point == std::string::npos ? text.size() : point;
    const int whole = first < wholeEnd ? static_cast<int>(wholeEnd - first) : 0;
    const int precision = std::max(1, whole + scale);
    if (precision > 38) Overflow(literal, u"numeric");
    bool invalid = false;
    const std::optional<Int128> value = DecimalMath::Parse(text, precision, scale, invalid);
    if (!value) Overflow(literal, u"numeric");
    return std::make_unique<BoundConstant>(SqlValue::Wide(*value),
                                           MakeType(TypeKind::Numeric, 0, precision, scale));
}

BoundPtr IntegerLiteral(const tsql::Literal& literal) {
    bool fits = false;
    const qlonglong value = literal.text.toLongLong(&fits);
    // What an int cannot hold is a decimal, not a bigint.
    if (!fits || value > std::numeric_limits<int32_t>::max()) return DecimalLiteral(literal);
    return std::make_unique<BoundConstant>(SqlValue::Integer(value), IntType());
}

BoundPtr TextLiteral(const tsql::Literal& literal, bool national) {
    const std::string written = ToUtf8(literal.text);
    TextArena arena;
    const std::string_view text = national ? written : Conversion::ToCodePage(written, arena);
    const size_t length = Utf16Length(text);
    const size_t limit = national ? 4000 : 8000;
    const SqlType type =
        MakeType(national ? TypeKind::NVarChar : TypeKind::VarChar,
                 length > limit ? SqlType::Max : static_cast<int>(std::max<size_t>(length, 1)));
    return std::make_unique<BoundConstant>(SqlValue::Text(text), type);
}

BoundPtr BinaryLiteral(const tsql::Literal& literal) {
    const std::optional<std::string> bytes = Conversion::BytesOfHex(ToUtf8(literal.text));
    if (!bytes) throw SqlError(102, {literal.text}, literal.line);
    const size_t size = std::max<size_t>(bytes->size(), 1);
    const SqlType type =
        MakeType(TypeKind::VarBinary, size > 8000 ? SqlType::Max : static_cast<int>(size));
    return std::make_unique<BoundConstant>(SqlValue::Bytes(*bytes), type);
}

}  // namespace

BoundPtr BindLiteral(const tsql::Literal& literal) {
    switch (literal.literal) {
        case tsql::LiteralKind::Integer:
            return IntegerLiteral(literal);
        case tsql::LiteralKind::Decimal:
            return DecimalLiteral(literal);
        case tsql::LiteralKind::Float: {
            const std::optional<double> value = TextNumber::ParseReal(ToUtf8(literal.text));
            if (!value) Overflow(literal, u"float");
            return std::make_unique<BoundConstant>(SqlValue::Real(*value),
                                                   MakeType(TypeKind::Float));
        }
        case tsql::LiteralKind::Money: {
            bool invalid = false;
            const std::optional<Int128> value =
                TextNumber::ParseMoney(ToUtf8(literal.text), invalid);
            if (!value || *value > std::numeric_limits<int64_t>::max()) Overflow(literal, u"money");
            return std::make_unique<BoundConstant>(SqlValue::Integer(static_cast<int64_t>(*value)),
                                                   MakeType(TypeKind::Money));
        }
        case tsql::LiteralKind::String:
            return TextLiteral(literal, false);
        case tsql::LiteralKind::NationalString:
            return TextLiteral(literal, true);
        case tsql::LiteralKind::Binary:
            return BinaryLiteral(literal);
        case tsql::LiteralKind::Default:
            throw SqlError(156, {QStringLiteral("DEFAULT")}, literal.line);
        default: {
            auto null = std::make_unique<BoundConstant>(SqlValue(), IntType());
            null->untypedNull = true;
            return null;
        }
    }
}

}  // namespace quarv::localdb::engine
