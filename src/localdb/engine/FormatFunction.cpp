// FORMAT: numbers, dates and times as text by a format string.
#include <array>
#include <cstdio>
#include <cstdlib>

#include "localdb/engine/DateArguments.h"
#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/MomentFormat.h"
#include "localdb/engine/NumberFormat.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

// Takes digits with or without a point and a sign.
void TakeDigits(FormattedNumber& number, std::string_view text) {
    number.negative = !text.empty() && text.front() == '-';
    if (number.negative) text.remove_prefix(1);
    const size_t point = std::min(text.find('.'), text.size());
    number.digits = text.substr(0, point);
    number.point = static_cast<int>(point);
    if (point < text.size()) number.digits += text.substr(point + 1);
}

// As many digits as the type holds for certain, in front of the power of ten.
void TakeReal(FormattedNumber& number, double value, int significant) {
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "%.*e", significant - 1, value);
    const std::string_view all(text.data());
    const size_t exponent = all.find('e');
    TakeDigits(number, all.substr(0, exponent));
    number.point += std::atoi(text.data() + exponent + 1);
    number.significant = significant;
}

FormattedNumber NumberOf(const SqlValue& value, const SqlType& type) {
    FormattedNumber number;
    switch (ClassOf(type)) {
        case TypeClass::Decimal:
            number.kind = FormattedNumber::Kind::Exact;
            TakeDigits(number, DecimalMath::ToText(value.wide, type.scale));
            break;
        case TypeClass::Money:
            number.kind = FormattedNumber::Kind::Exact;
            TakeDigits(number, DecimalMath::ToText(value.integer, 4));
            break;
        case TypeClass::Real:
            number.kind = FormattedNumber::Kind::Real;
            TakeReal(number, value.real, type.kind == TypeKind::Real ? 7 : 15);
            break;
        default:
            TakeDigits(number, std::to_string(value.integer));
            number.integer = value.integer;
            number.bits = FactsOf(type.kind).bytes * 8;
    }
    return number;
}

// The other cultures write months and signs of their own.
void CheckCulture(const SqlValue& culture) {
    const QString name = FromUtf8(culture.text);
    if (name.compare(u"en-US", Qt::CaseInsensitive) == 0) return;
    throw SqlError(40517, {QStringLiteral("FORMAT culture ") + name});
}

SqlValue Format(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    if (call.parts.size() > 2) CheckCulture(a[2]);
    const SqlType& type = call.parts[0]->type;
    const std::optional<std::string> text =
        ClassOf(type) == TypeClass::Moment
            ? MomentFormat::Format(MomentOf(a[0], type), type, a[1].text)
            : NumberFormat::Format(NumberOf(a[0], type), a[1].text);
    if (!text) return {};
    return FitResult(call, evaluation.arena->Keep(*text), evaluation);
}

BoundPtr BindFormat(Arguments arguments) {
    const SqlType& type = arguments[0]->type;
    const bool number = IsNumber(type) && type.kind != TypeKind::Bit;
    if (arguments[0]->untypedNull || (!number && ClassOf(type) != TypeClass::Moment)) {
        const QString name = arguments[0]->untypedNull ? QStringLiteral("NULL") : type.Name();
        throw SqlError(8116, {name, QStringLiteral("1"), QStringLiteral("format")});
    }
    const SqlType text = MakeType(TypeKind::NVarChar, 4000);
    for (size_t i = 1; i < arguments.size(); ++i) {
        if (ClassOf(arguments[i]->type) != TypeClass::Text && !arguments[i]->untypedNull) {
            throw SqlError(8116, {arguments[i]->type.Name(), QString::number(i + 1),
                                  QStringLiteral("format")});
        }
        arguments[i] = ExpressionBinder::Convert(std::move(arguments[i]), text);
    }
    return MakeNullableCall(Format, text, std::move(arguments));
}

}  // namespace

std::span<const FunctionEntry> FormatFunctions() {
    static constexpr std::array<FunctionEntry, 1> Table = {{{u"format", 2, 3, BindFormat}}};
    return Table;
}

}  // namespace quarv::localdb::engine
