#include "localdb/tsql/ControlFlow.h"

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/StatementParser.h"
#include "localdb/tsql/Transaction.h"
#include "localdb/tsql/TryCatch.h"

namespace quarv::localdb::tsql {

StatementPtr ParseBegin(TokenReader& reader) {
    reader.Take();
    if (reader.AtWord(u"tran") || reader.AtWord(u"transaction")) {
        return ParseBeginTransaction(reader);
    }
    if (reader.AtWord(u"try")) return ParseTryCatch(reader);
    for (const QStringView word : {u"distributed", u"dialog", u"conversation"}) {
        if (reader.AtWord(word))
            reader.Unsupported(QStringLiteral("BEGIN ") + word.toString().toUpper());
    }
    auto block = std::make_unique<Block>();
    const Jumps::Inside inside(reader.ControlFlow(), *block);
    ParseStatements(reader, block->statements);
    if (block->statements.empty()) reader.Fail();
    reader.ExpectWord(u"end");
    return block;
}

StatementPtr ParseIf(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<If>();
    statement->condition = ParseCondition(reader);
    const Jumps::Inside inside(reader.ControlFlow(), *statement);
    statement->then = ParseStatement(reader);
    if (reader.TryWord(u"else")) statement->otherwise = ParseStatement(reader);
    return statement;
}

StatementPtr ParseWhile(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<While>();
    statement->condition = ParseCondition(reader);
    const Jumps::Inside inside(reader.ControlFlow(), *statement, Jumps::Place::Loop);
    statement->body = ParseStatement(reader);
    return statement;
}

StatementPtr ParseLoopJump(TokenReader& reader) {
    auto statement = std::make_unique<LoopJump>();
    const Token word = reader.Take();
    statement->leaves = word.IsWord(u"break");
    if (!reader.ControlFlow().InLoop()) {
        throw SyntaxError(
            statement->leaves ? SyntaxError::BreakOutsideLoop : SyntaxError::ContinueOutsideLoop,
            {}, word.line, word.column);
    }
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
