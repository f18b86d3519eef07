// UpdateStatement: the statement that would bring one changed cell into the database. Nobody sends
// it: the grid is a scratch surface, and reports of errors quote the statement.
#pragma once

#include <QString>

#include "base/Value.h"

namespace quarv {

// `keyClause` is the condition that picks the row. Names stand in brackets as they are; of the
// value's text the first MostLiteralUnits go in. Raises what SQLValue raises.
QString UpdateStatement(const QString& table, const QString& column, const Value& value,
                        const QString& keyClause);

}  // namespace quarv
