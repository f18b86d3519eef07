// BatchParser: the way in to the front end: the text of a batch, of a procedure or of a view to its
// tree. Nothing runs before the whole text was read.
#pragma once

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

// The statements of a batch, in order; an empty batch has none. Raises SyntaxError.
StatementList ParseBatch(const QString& batch);
// An expression alone, as a stored default is. Raises SyntaxError.
ExpressionPtr ParseExpressionText(const QString& text);
// A condition alone, as a stored check is. Raises SyntaxError.
ExpressionPtr ParseConditionText(const QString& text);

}  // namespace quarv::localdb::tsql
