// DateArguments: the dates that the date functions take: values of the date and time types, text
// in any form that is read as one, and numbers, which count days as a datetime does.
#pragma once

#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/Moment.h"

namespace quarv::localdb::engine {

// Moments and text stay; numbers become datetime. Raises SqlError 8116 for what is no date.
BoundPtr AsDate(BoundPtr value, int number, const QString& function);
// The moment of a value that AsDate let through. Raises SqlError 241 or 242.
Moment MomentOf(const SqlValue& value, const SqlType& type);
// The same moment by the clock of UTC.
Moment InUtc(Moment moment);
// `moment` as a value of a date or time type; nothing where that has no room for it.
std::optional<SqlValue> ValueOf(const Moment& moment, const SqlType& type);

}  // namespace quarv::localdb::engine
