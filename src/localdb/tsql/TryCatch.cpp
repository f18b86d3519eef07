#include "localdb/tsql/TryCatch.h"

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/StatementParser.h"

namespace quarv::localdb::tsql {

namespace {

void ParseScope(TokenReader& reader, Block& block, QStringView word, Jumps::Place place) {
    reader.ExpectWord(word);
    {
        const Jumps::Inside inside(reader.ControlFlow(), block, place);
        ParseStatements(reader, block.statements);
    }
    reader.ExpectWord(u"end");
    reader.ExpectWord(word);
}

ExpressionPtr ParseOperand(TokenReader& reader) {
    if (reader.Peek().kind != TokenKind::Variable) return ParseConstant(reader);
    const int line = reader.Line();
    auto variable = std::make_unique<Variable>(reader.Take().text);
    variable->line = line;
    return variable;
}

}  // namespace

StatementPtr ParseTryCatch(TokenReader& reader) {
    auto statement = std::make_unique<TryCatch>();
    const Jumps::Inside inside(reader.ControlFlow(), *statement);
    ParseScope(reader, statement->body, u"try", Jumps::Place::Try);
    reader.ExpectWord(u"begin");
    ParseScope(reader, statement->handler, u"catch", Jumps::Place::Catch);
    return statement;
}

StatementPtr ParseThrow(TokenReader& reader) {
    const Token word = reader.Take();
    auto statement = std::make_unique<Throw>();
    const Token& next = reader.Peek();
    if (next.kind != TokenKind::Variable && next.kind != TokenKind::Integer && !next.IsSign(u"-")) {
        if (!reader.ControlFlow().InCatch()) {
            throw SyntaxError(SyntaxError::ThrowOutsideCatch, {}, word.line, word.column);
        }
        return statement;
    }
    statement->number = ParseOperand(reader);
    reader.ExpectSign(u",");
    statement->message = ParseOperand(reader);
    reader.ExpectSign(u",");
    statement->state = ParseOperand(reader);
    return statement;
}

}  // namespace quarv::localdb::tsql
