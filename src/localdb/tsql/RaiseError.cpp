#include "localdb/tsql/RaiseError.h"

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

namespace {

ExpressionPtr ParseArgument(TokenReader& reader) {
    if (reader.Peek().kind != TokenKind::Variable) return ParseConstant(reader);
    const int line = reader.Line();
    auto variable = std::make_unique<Variable>(reader.Take().text);
    variable->line = line;
    return variable;
}

void ParseOptions(TokenReader& reader, RaiseError& statement) {
    do {
        if (reader.TryWord(u"log")) {
            statement.log = true;
        } else if (reader.TryWord(u"nowait")) {
            statement.noWait = true;
        } else {
            reader.ExpectWord(u"seterror");
            statement.setError = true;
        }
    } while (reader.TrySign(u","));
}

}  // namespace

StatementPtr ParseRaiseError(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<RaiseError>();
    reader.ExpectSign(u"(");
    statement->message = ParseArgument(reader);
    reader.ExpectSign(u",");
    statement->severity = ParseArgument(reader);
    reader.ExpectSign(u",");
    statement->state = ParseArgument(reader);
    while (reader.TrySign(u",")) statement->arguments.push_back(ParseArgument(reader));
    reader.ExpectSign(u")");
    if (reader.TryWord(u"with")) ParseOptions(reader, *statement);
    return statement;
}

}  // namespace quarv::localdb::tsql
