// ADOUtils: values of record sets as SQL literals, for statements that are composed without a
// connection at hand. It knows neither tables nor controls.
#pragma once

#include <QString>

#include "base/Value.h"

namespace quarv {

// UTF-16 units of a value that go into a literal of an update statement.
constexpr qint16 MostLiteralUnits = 999;

// In single quotes, those inside doubled; nothing else is escaped.
QString SQLQuote(const QString& Text);

// NULL bare for null, '<Long>' for bytes, else the first `MaxLen` UTF-16 units of the value's
// ordinary text in quotes, numbers and dates too. Raises InvalidProcedureCall where such a text is
// to be cut to less than nothing, TypeMismatch for an object.
QString SQLValue(const Value& Value, qint16 MaxLen);

}  // namespace quarv
