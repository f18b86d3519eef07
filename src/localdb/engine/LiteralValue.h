// LiteralValue: the value and type of a literal as T-SQL has them ("Constants").
#pragma once

#include "localdb/engine/BoundNodes.h"

namespace quarv::localdb::engine {

// Raises SqlError 8115 for a number beyond 38 digits.
BoundPtr BindLiteral(const tsql::Literal& literal);

}  // namespace quarv::localdb::engine
