// Numbers as texts and texts as numbers, for Value: digits 0 to 9 in every locale, the locale's own
// decimal sign, no grouping. Free functions; they know no kind of value but the number.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringView>
#include <variant>

#include "base/Decimal.h"

namespace quarv {

// The locale's decimal sign.
QChar DecimalSign(const QLocale& locale);

// The shortest digits that read back as the same number; "1.5E+20" outside 1E-5..1E+16.
QString FloatText(double value, QChar point);
QString FloatText(float value, QChar point);

// A whole text that is a number, blanks around it allowed: exact where it has no exponent and no
// more than 38 digits. The decimal sign is the locale's or ".".
// Raises TypeMismatch where it is no number, Overflow where it is too large or too
// small for a double.
std::variant<Decimal, double> ParseNumber(QStringView text, const QLocale& locale);

// Rounded half to even. Each raises Overflow where the result does not fit 64 bits.
qint64 RoundToInteger(const Decimal& value);
qint64 RoundToInteger(double value);

}  // namespace quarv
