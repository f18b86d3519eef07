#include "localdb/tsql/ControlFlow.h"

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/StatementParser.h"
#include "localdb/tsql/Transaction.h"

namespace quarv::localdb::tsql {

StatementPtr ParseBegin(TokenReader& reader) {
    reader.Take();
    if (reader.AtWord(u"tran") || reader.AtWord(u"transaction")) {
        return ParseBeginTransaction(reader);
    }
    for (const QStringView word : {u"try", u"catch", u"distributed", u"dialog", u"conversation"}) {
        if (reader.AtWord(word))
            reader.Unsupported(QStringLiteral("BEGIN ") + word.toString().toUpper());
    }
    auto block = std::make_unique<Block>();
    ParseStatements(reader, block->statements);
    if (block->statements.empty()) reader.Fail();
    reader.ExpectWord(u"end");
    return block;
}

StatementPtr ParseIf(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<If>();
    statement->condition = ParseCondition(reader);
    statement->then = ParseStatement(reader);
    if (reader.TryWord(u"else")) statement->otherwise = ParseStatement(reader);
    return statement;
}

StatementPtr ParseWhile(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<While>();
    statement->condition = ParseCondition(reader);
    statement->body = ParseStatement(reader);
    return statement;
}

StatementPtr ParseLoopJump(TokenReader& reader) {
    auto statement = std::make_unique<LoopJump>();
    statement->leaves = reader.Take().IsWord(u"break");
    return statement;
}

StatementPtr ParseReturn(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<Return>();
    const Token& next = reader.Peek();
    const bool ends = next.kind == TokenKind::End || next.IsSign(u";") ||
                      (next.kind == TokenKind::Word && next.reserved && !next.IsWord(u"case") &&
                       !next.IsWord(u"null") && !next.IsWord(u"convert"));
    if (!ends) statement->status = ParseExpression(reader);
    return statement;
}

}  // namespace quarv::localdb::tsql
