#include "base/NumberText.h"

#include <QVarLengthArray>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "base/RuntimeError.h"

namespace quarv {

namespace {

// Decimal exponents, of the first digit, that are written without an exponent.
constexpr int MinPlainExponent = -5;
constexpr int MaxPlainExponent = 15;

struct Digits {
    std::string_view text;  // no point
    int exponent;           // of the first digit
    bool negative;
};

// Takes "-d.ddde-xx" apart; squeezes the point out of `text` in place.
Digits TakeApart(char* text, const char* end) {
    Digits result{{}, 0, *text == '-'};
    if (result.negative) ++text;
    const char* const mark = std::find(static_cast<const char*>(text), end, 'e');
    const char* exponent = mark + 1;
    if (exponent < end && *exponent == '+') ++exponent;
    if (mark < end) std::from_chars(exponent, end, result.exponent);
    size_t length = static_cast<size_t>(mark - text);
    if (length > 1) {
        std::copy(text + 2, text + length, text + 1);
        --length;
    }
    result.text = std::string_view(text, length);
    return result;
}

QString PlainText(const Digits& digits, QChar point) {
    QString text = QString::fromLatin1(digits.text.data(), qsizetype(digits.text.size()));
    const qsizetype whole = digits.exponent + 1;
    if (whole <= 0) {
        text.prepend(QString(-whole, u'0')).prepend(point).prepend(u'0');
    } else if (whole >= text.size()) {
        text.append(QString(whole - text.size(), u'0'));
    } else {
        text.insert(whole, point);
    }
    return text;
}

QString ExponentText(const Digits& digits, QChar point) {
    QString text = QString::fromLatin1(digits.text.data(), qsizetype(digits.text.size()));
    if (text.size() > 1) text.insert(1, point);
    text += digits.exponent < 0 ? QStringLiteral("E-") : QStringLiteral("E+");
    return text + QString::number(std::abs(digits.exponent)).rightJustified(2, u'0');
}

template <typename Float>
QString Print(Float value, QChar point) {
    if (std::isnan(value)) return QStringLiteral("NaN");
    if (std::isinf(value)) {
        return value < 0 ? QStringLiteral("-Infinity") : QStringLiteral("Infinity");
    }
    std::array<char, 64> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                            std::chars_format::scientific);
    Q_ASSERT(error == std::errc());
    const Digits digits = TakeApart(buffer.data(), end);
    const bool plain = digits.exponent >= MinPlainExponent && digits.exponent <= MaxPlainExponent;
    QString text = plain ? PlainText(digits, point) : ExponentText(digits, point);
    if (digits.negative) text.prepend(u'-');
    return text;
}

// The characters of a number, its point as "."; empty where another character stands in `text`.
QVarLengthArray<char, 64> Normalise(QStringView text, QChar point) {
    QVarLengthArray<char, 64> result;
    for (QChar each : text) {
        if (each == point) each = u'.';
        const bool known = (each >= u'0' && each <= u'9') ||
                           QStringView(u"+-.eE").contains(each, Qt::CaseSensitive);
        if (!known) return {};
        result.append(each.toLatin1());
    }
    return result;
}

}  // namespace

QChar DecimalSign(const QLocale& locale) {
    const QString sign = locale.decimalPoint();
    return sign.isEmpty() ? QChar(u'.') : sign.front();
}

QString FloatText(double value, QChar point) {
    return Print(value, point);
}

QString FloatText(float value, QChar point) {
    return Print(value, point);
}

std::variant<Decimal, double> ParseNumber(QStringView text, const QLocale& locale) {
    const auto characters = Normalise(text.trimmed(), DecimalSign(locale));
    const char* first = characters.begin();
    const char* const end = characters.end();
    const auto exact =
        Decimal::Parse(QString::fromLatin1(characters.constData(), characters.size()));
    if (exact) return *exact;
    // from_chars takes no plus sign of its own; "+-1" stays refused.
    if (first != end && *first == '+') ++first;
    if (first == end || (first != characters.begin() && *first == '-')) {
        throw RuntimeError(RuntimeError::TypeMismatch);
    }
    double value = 0;
    const auto [stop, error] = std::from_chars(first, end, value);
    if (error == std::errc::result_out_of_range) throw RuntimeError(RuntimeError::Overflow);
    if (error != std::errc() || stop != end) throw RuntimeError(RuntimeError::TypeMismatch);
    return value;
}

qint64 RoundToInteger(const Decimal& value) {
    UInt128 unit = 1;
    for (int i = 0; i < value.scale; ++i) unit *= 10;
    UInt128 whole = value.magnitude / unit;
    const UInt128 rest = value.magnitude % unit;
    const UInt128 half = unit / 2;  // 0 for unit 1, whose rest is 0
    if (rest > half || (rest == half && rest != 0 && whole % 2 == 1)) ++whole;
    const UInt128 limit = UInt128{static_cast<quint64>(INT64_MAX)} + (value.negative ? 1 : 0);
    if (whole > limit) throw RuntimeError(RuntimeError::Overflow);
    const auto bits = static_cast<quint64>(whole);
    return static_cast<qint64>(value.negative ? 0 - bits : bits);
}

qint64 RoundToInteger(double value) {
    constexpr double Limit = 9223372036854775808.0;  // 2^63
    // nearbyint would follow the thread's rounding mode; remainder() always rounds half to even.
    const double whole = value - std::remainder(value, 1.0);
    if (!(whole >= -Limit && whole < Limit)) throw RuntimeError(RuntimeError::Overflow);
    return static_cast<qint64>(whole);
}

}  // namespace quarv
