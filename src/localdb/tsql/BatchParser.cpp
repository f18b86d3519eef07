#include "localdb/tsql/BatchParser.h"

#include "localdb/tsql/Execute.h"
#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/StatementParser.h"

namespace quarv::localdb::tsql {

StatementList ParseBatch(const QString& batch) {
    TokenReader reader(batch);
    StatementList statements;
    while (reader.TrySign(u";")) {
    }
    // Only the first statement of a batch may call a procedure without EXECUTE.
    if (IsBareCall(reader)) statements.push_back(ParseExecute(reader));
    ParseStatements(reader, statements);
    if (!reader.AtEnd()) reader.Fail();
    reader.ControlFlow().Join();
    return statements;
}

ExpressionPtr ParseExpressionText(const QString& text) {
    TokenReader reader(text);
    ExpressionPtr expression = ParseExpression(reader);
    if (!reader.AtEnd()) reader.Fail();
    return expression;
}

ExpressionPtr ParseConditionText(const QString& text) {
    TokenReader reader(text);
    ExpressionPtr condition = ParseCondition(reader);
    if (!reader.AtEnd()) reader.Fail();
    return condition;
}

}  // namespace quarv::localdb::tsql
