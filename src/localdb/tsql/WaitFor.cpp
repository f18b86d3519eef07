#include "localdb/tsql/WaitFor.h"

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

StatementPtr ParseWaitFor(TokenReader& reader) {
    reader.Take();
    if (reader.AtSign(u"(")) reader.Unsupported(QStringLiteral("WAITFOR (...)"));
    auto statement = std::make_unique<WaitFor>();
    statement->untilTime = reader.TryWord(u"time");
    if (!statement->untilTime) reader.ExpectWord(u"delay");
    const Token& token = reader.Peek();
    const int line = token.line;
    if (token.kind == TokenKind::Variable) {
        statement->time = std::make_unique<Variable>(reader.Take().text);
    } else if (token.kind == TokenKind::String || token.kind == TokenKind::NationalString) {
        statement->time = ParseConstant(reader);
    } else {
        reader.Fail();
    }
    statement->time->line = line;
    return statement;
}

}  // namespace quarv::localdb::tsql
