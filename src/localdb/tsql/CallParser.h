// CallParser: the function calls whose arguments are more than a list of values.
#pragma once

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

// IIF(condition, value, value): a CASE.
ExpressionPtr ParseIif(TokenReader& reader);
// TRIM([LEADING | TRAILING | BOTH] [characters FROM] text): a call of trim, ltrim or rtrim with the
// text before the characters.
ExpressionPtr ParseTrim(TokenReader& reader);
// Raises SyntaxError for a call that this server does not have.
ExpressionPtr RefuseCall(TokenReader& reader);

}  // namespace quarv::localdb::tsql
