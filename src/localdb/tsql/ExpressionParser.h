// ExpressionParser: reads expressions and conditions by precedence ("Operator Precedence
// (Transact-SQL)"). Values and conditions are told apart: "a = 1" is no value.
#pragma once

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

// What stands for a value. Raises SyntaxError.
ExpressionPtr ParseExpression(TokenReader& reader);
// The rest of an expression whose first part, `left`, stood in parentheses.
ExpressionPtr ContinueExpression(TokenReader& reader, ExpressionPtr left);
// Expressions with commas between them, one at least.
ExpressionList ParseList(TokenReader& reader);
// What is true, false or unknown; in ConditionParser.cpp. Raises SyntaxError.
ExpressionPtr ParseCondition(TokenReader& reader);
// One value of a list of values or arguments: an expression, or the word DEFAULT.
ExpressionPtr ParseValueOrDefault(TokenReader& reader);
// A constant with an optional sign, as parameters' defaults and EXEC's arguments are.
ExpressionPtr ParseConstant(TokenReader& reader);
// A literal token as an expression; nothing where the next token is none.
ExpressionPtr TryLiteral(TokenReader& reader);

}  // namespace quarv::localdb::tsql
