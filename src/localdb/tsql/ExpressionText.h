// ExpressionText: writes an expression the way the server keeps a default: "((0))", "(getdate())",
// "(N'x')", names in brackets; and a check or a computed column. Reading the text back gives the
// same expression.
#pragma once

#include "localdb/tsql/Expression.h"

namespace quarv::localdb::tsql {

// In its outer parentheses. Raises SyntaxError for what cannot stand in a default.
QString DefaultText(const Expression& expression);
// A condition as the server keeps a check: "([a]>(0) AND [b] IS NOT NULL)". Raises likewise.
QString ConditionText(const Expression& condition);

}  // namespace quarv::localdb::tsql
