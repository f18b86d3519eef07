#include "localdb/engine/Conversion.h"

#include <cmath>
#include <limits>

#include "localdb/engine/ConversionJob.h"
#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TextNumber.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

constexpr int MoneyScale = 4;
constexpr Int128 MoneyUnit = 10000;

using Job = ConversionJob;
using conversion::Overflow;
using conversion::SourceName;

struct Range {
    int64_t low, high;
};

Range RangeOf(TypeKind kind) {
    switch (kind) {
        case TypeKind::Bit:
            return {0, 1};
        case TypeKind::TinyInt:
            return {0, 255};
        case TypeKind::SmallInt:
            return {-32768, 32767};
        case TypeKind::Int:
        case TypeKind::SmallMoney:
            return {std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()};
        default:
            return {std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max()};
    }
}

SqlValue IntegerOf(Int128 value, const Job& job) {
    if (job.to.kind == TypeKind::Bit) return SqlValue::Integer(value != 0);
    const Range range = RangeOf(job.to.kind);
    if (value >= range.low && value <= range.high) {
        return SqlValue::Integer(static_cast<int64_t>(value));
    }
    const bool small = job.to.kind == TypeKind::TinyInt || job.to.kind == TypeKind::SmallInt;
    if (small && ClassOf(job.from) == TypeClass::Integer) {
        throw SqlError(220, {job.to.Name(), QString::fromStdString(DecimalMath::ToText(value, 0))});
    }
    const bool integer = ClassOf(job.from) == TypeClass::Integer;
    Overflow(integer ? QStringLiteral("expression") : SourceName(job.from), job.to);
}

SqlValue FromReal(const Job& job) {
    const double real = job.value.real;
    if (job.to.kind == TypeKind::Bit) return SqlValue::Integer(real != 0);
    const double whole = std::trunc(real);
    // 2^63 is the first double beyond int64.
    if (!(whole >= -9223372036854775808.0 && whole < 9223372036854775808.0)) {
        throw SqlError(232, {job.to.Name(), QString::number(real, 'f', 6)});
    }
    const Range range = RangeOf(job.to.kind);
    const auto value = static_cast<int64_t>(whole);
    if (value < range.low || value > range.high) {
        throw SqlError(232, {job.to.Name(), QString::number(real, 'f', 6)});
    }
    return SqlValue::Integer(value);
}

double ReadReal(const Job& job) {
    const std::optional<double> real = TextNumber::ParseReal(job.value.text);
    if (!real) throw SqlError(8114, {job.from.Name(), job.to.Name()});
    return *real;
}

SqlValue TextToInteger(const Job& job) {
    const std::string_view text = WithoutTrailingBlanks(job.value.text);
    if (job.to.kind == TypeKind::Bit) {
        const QString word = FromUtf8(text).trimmed().toLower();
        if (word == u"true") return SqlValue::Integer(1);
        if (word == u"false") return SqlValue::Integer(0);
    }
    bool invalid = false;
    const std::optional<Int128> number = TextNumber::ParseInteger(text, invalid);
    const bool big = job.to.kind == TypeKind::BigInt;
    if (invalid && big) throw SqlError(8114, {job.from.Name(), job.to.Name()});
    if (invalid) {
        throw SqlError(245, {job.from.Name(), FromUtf8(job.value.text), job.to.Name()});
    }
    if (job.to.kind == TypeKind::Bit) return SqlValue::Integer(!number || *number != 0);
    const Range range = RangeOf(job.to.kind);
    if (number && *number >= range.low && *number <= range.high) {
        return SqlValue::Integer(static_cast<int64_t>(*number));
    }
    if (big) Overflow(QStringLiteral("expression"), job.to);
    if (job.to.kind == TypeKind::Int) {
        throw SqlError(248, {job.from.Name(), FromUtf8(job.value.text)});
    }
    const bool tiny = job.to.kind == TypeKind::TinyInt;
    throw SqlError(244, {job.from.Name(), FromUtf8(job.value.text),
                         tiny ? QStringLiteral("INT1") : QStringLiteral("INT2")});
}

SqlValue BytesToInteger(const Job& job) {
    const std::string_view bytes = job.value.text;
    if (job.to.kind == TypeKind::Bit) {
        return SqlValue::Integer(bytes.find_first_not_of('\0') != std::string_view::npos);
    }
    const auto size = static_cast<size_t>(FactsOf(job.to.kind).bytes);
    const int64_t number = conversion::IntegerOfBytes(bytes, size);
    // A tinyint has no sign.
    return SqlValue::Integer(size == 1 ? number & 0xFF : number);
}

SqlValue ToInteger(const Job& job) {
    switch (ClassOf(job.from)) {
        case TypeClass::Integer:
            return IntegerOf(job.value.integer, job);
        case TypeClass::Decimal: {
            const bool bit = job.to.kind == TypeKind::Bit;
            return IntegerOf(
                bit ? job.value.wide : job.value.wide / DecimalMath::PowerOfTen(job.from.scale),
                job);
        }
        case TypeClass::Money: {
            if (job.to.kind == TypeKind::Bit) return IntegerOf(job.value.integer, job);
            return IntegerOf(*DecimalMath::Rescale(job.value.integer, MoneyScale, 38, 0), job);
        }
        case TypeClass::Real:
            return FromReal(job);
        case TypeClass::Text:
            return TextToInteger(job);
        case TypeClass::Binary:
            return BytesToInteger(job);
        default: {
            // A moment counts whole days since 1900, rounded at noon.
            const Moment moment = Moment::Load(job.from.kind, job.value.integer);
            const int64_t days = moment.Days() - Moment::DaysFromCivil(1900, 1, 1);
            return IntegerOf(days + (moment.hour >= 12 ? 1 : 0), job);
        }
    }
}

SqlValue ToDecimal(const Job& job) {
    const int precision = job.to.precision, scale = job.to.scale;
    std::optional<Int128> result;
    bool invalid = false;
    QString what = SourceName(job.from);
    switch (ClassOf(job.from)) {
        case TypeClass::Integer:
            result = DecimalMath::Rescale(job.value.integer, 0, precision, scale);
            break;
        case TypeClass::Decimal:
            result = DecimalMath::Rescale(job.value.wide, job.from.scale, precision, scale);
            break;
        case TypeClass::Money:
            result = DecimalMath::Rescale(job.value.integer, MoneyScale, precision, scale);
            break;
        case TypeClass::Real:
            result = DecimalMath::FromDouble(job.value.real, precision, scale);
            break;
        case TypeClass::Text:
            result = DecimalMath::Parse(job.value.text, precision, scale, invalid);
            if (invalid) throw SqlError(8114, {job.from.Name(), QStringLiteral("numeric")});
            break;
        case TypeClass::Binary: {
            int written = 0;
            const Int128 digits = conversion::DecimalOfBytes(job, written);
            result = DecimalMath::Rescale(digits, written, precision, scale);
            break;
        }
        default: {
            const double days = TextNumber::DaysSince1900(job.from.kind, job.value.integer);
            result = DecimalMath::FromDouble(days, precision, scale);
            what = QStringLiteral("expression");
        }
    }
    if (!result) Overflow(what, job.to);
    return SqlValue::Wide(*result);
}

SqlValue ToMoney(const Job& job) {
    std::optional<Int128> result;
    bool invalid = false;
    switch (ClassOf(job.from)) {
        case TypeClass::Integer:
            result = job.value.integer * MoneyUnit;
            break;
        case TypeClass::Decimal:
            result = DecimalMath::Rescale(job.value.wide, job.from.scale, 38, MoneyScale);
            break;
        case TypeClass::Money:
            result = job.value.integer;
            break;
        case TypeClass::Real:
            result = DecimalMath::FromDouble(job.value.real, 38, MoneyScale);
            break;
        case TypeClass::Text:
            result = TextNumber::ParseMoney(job.value.text, invalid);
            if (invalid) throw SqlError(235);
            break;
        case TypeClass::Binary:
            result = conversion::IntegerOfBytes(job.value.text, FactsOf(job.to.kind).bytes);
            break;
        default:
            result = DecimalMath::FromDouble(
                TextNumber::DaysSince1900(job.from.kind, job.value.integer), 38, MoneyScale);
    }
    const Range range = RangeOf(job.to.kind);
    if (!result || *result < range.low || *result > range.high) {
        Overflow(SourceName(job.from), job.to);
    }
    return SqlValue::Integer(static_cast<int64_t>(*result));
}

}  // namespace

void conversion::Overflow(const QString& what, const SqlType& to) {
    const bool decimal = ClassOf(to) == TypeClass::Decimal;
    throw SqlError(8115, {what, decimal ? QStringLiteral("numeric") : to.Name()});
}

QString conversion::SourceName(const SqlType& from) {
    return ClassOf(from) == TypeClass::Decimal ? QStringLiteral("numeric") : from.Name();
}

SqlValue conversion::ToReal(const Job& job) {
    double real = 0;
    switch (ClassOf(job.from)) {
        case TypeClass::Integer:
            real = static_cast<double>(job.value.integer);
            break;
        case TypeClass::Decimal:
            real = DecimalMath::ToDouble(job.value.wide, job.from.scale);
            break;
        case TypeClass::Money:
            real = DecimalMath::ToDouble(job.value.integer, MoneyScale);
            break;
        case TypeClass::Real:
            real = job.value.real;
            break;
        case TypeClass::Text:
            real = ReadReal(job);
            break;
        default:
            real = TextNumber::DaysSince1900(job.from.kind, job.value.integer);
    }
    if (job.to.kind == TypeKind::Real) {
        if (std::fabs(real) > static_cast<double>(std::numeric_limits<float>::max())) {
            throw SqlError(232, {job.to.Name(), QString::number(real, 'f', 6)});
        }
        real = static_cast<double>(static_cast<float>(real));
    }
    return SqlValue::Real(real);
}

SqlValue Conversion::Convert(const SqlValue& value, const SqlType& from, const SqlType& to,
                             int style, TextArena& arena) {
    if (value.IsNull() || from == to) return value;
    const Job job{value, from, to, style, arena};
    switch (ClassOf(to)) {
        case TypeClass::Integer:
            return ToInteger(job);
        case TypeClass::Decimal:
            return ToDecimal(job);
        case TypeClass::Money:
            return ToMoney(job);
        case TypeClass::Real:
            return conversion::ToReal(job);
        case TypeClass::Text:
            return conversion::ToText(job);
        case TypeClass::Moment:
            return conversion::ToMoment(job);
        case TypeClass::Binary:
            return conversion::ToBinary(job);
        default:
            return conversion::ToGuid(job);
    }
}

QString Conversion::ToMessageText(const SqlValue& value, const SqlType& type) {
    if (value.IsNull()) return QStringLiteral("<NULL>");
    TextArena arena;
    const SqlType text = MakeType(TypeKind::NVarChar, SqlType::Max);
    const TypeClass cls = ClassOf(type);
    const int style = cls == TypeClass::Binary ? 1 : NoStyle;
    const QString shown = FromUtf8(Convert(value, type, text, style, arena).text);
    return cls == TypeClass::Guid ? shown.toLower() : shown;
}

}  // namespace quarv::localdb::engine
