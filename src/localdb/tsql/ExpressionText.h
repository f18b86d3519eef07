// ExpressionText: writes an expression the way the server keeps a default: "((0))", "(getdate())",
// "(N'x')", names in brackets. Reading the text back gives the same expression.
#pragma once

#include "localdb/tsql/Expression.h"

namespace quarv::localdb::tsql {

// In its outer parentheses. Raises SyntaxError for what cannot stand in a default.
QString DefaultText(const Expression& expression);

}  // namespace quarv::localdb::tsql
