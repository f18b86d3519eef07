// DateArguments: the dates that the date functions take (values of the date and time types, text in
// any form that is read as one, and numbers, which count days as a datetime does) and the parts of
// a date that their first word names.
#pragma once

#include "localdb/engine/DateParts.h"
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

// The part that a call's first word names. Raises SqlError 1023 where that is no word and 155 where
// it is no part.
DatePart FindPart(const QString& function, const QString& word);
// The call with its part, which PartOf gives back when it runs.
BoundPtr WithPart(BoundPtr call, DatePart part);
DatePart PartOf(const BoundCall& call);

}  // namespace quarv::localdb::engine
