#include "localdb/tsql/Execute.h"

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/StatementParser.h"

namespace quarv::localdb::tsql {

namespace {

// A word without quotes counts as a string here.
ExpressionPtr ParseArgumentValue(TokenReader& reader) {
    const int line = reader.Line();
    ExpressionPtr value;
    if (reader.Peek().kind == TokenKind::Variable) {
        value = std::make_unique<Variable>(reader.Take().text);
    } else if (reader.TryWord(u"default")) {
        value = std::make_unique<Literal>(LiteralKind::Default, QString());
    } else if (reader.Peek().IsName()) {
        value = std::make_unique<Literal>(LiteralKind::NationalString, reader.Take().text);
    } else {
        value = ParseConstant(reader);
    }
    value->line = line;
    return value;
}

ExecuteArgument ParseArgument(TokenReader& reader) {
    ExecuteArgument argument;
    if (reader.Peek().kind == TokenKind::Variable && reader.AtSign(u"=", 1)) {
        argument.name = reader.Take().text;
        reader.Take();
    }
    argument.value = ParseArgumentValue(reader);
    argument.output = reader.TryWord(u"output") || reader.TryWord(u"out");
    return argument;
}

bool BeginsArgument(TokenReader& reader) {
    const Token& token = reader.Peek();
    switch (token.kind) {
        case TokenKind::End:
            return false;
        case TokenKind::Word:
            return !token.reserved || token.IsWord(u"null") || token.IsWord(u"default");
        case TokenKind::Sign:
            return token.IsSign(u"-") || token.IsSign(u"+");
        default:
            return true;
    }
}

}  // namespace

StatementPtr ParseExecute(TokenReader& reader) {
    auto statement = std::make_unique<Execute>();
    statement->line = reader.Line();
    if (!reader.TryWord(u"execute")) reader.TryWord(u"exec");
    if (reader.TrySign(u"(")) {
        statement->text = ParseExpression(reader);
        reader.ExpectSign(u")");
        for (const QStringView word : {u"as", u"at"}) {
            if (reader.AtWord(word))
                reader.Unsupported(QStringLiteral("EXECUTE ... ") + word.toString());
        }
        return statement;
    }
    if (reader.Peek().kind == TokenKind::Variable) {
        if (reader.AtSign(u"=", 1)) {
            statement->status = reader.Take().text;
            reader.Take();
        }
    }
    if (reader.Peek().kind == TokenKind::Variable) {
        statement->procedureVariable = reader.Take().text;
    } else {
        statement->procedure = ParseObjectName(reader, true);
    }
    // The number of a procedure group; there are no groups, so only the first can be meant.
    if (reader.AtSign(u";") && reader.Peek(1).kind == TokenKind::Integer) {
        reader.Take();
        reader.Take();
    }
    if (BeginsArgument(reader)) {
        do {
            statement->arguments.push_back(ParseArgument(reader));
        } while (reader.TrySign(u","));
    }
    if (reader.AtWord(u"with")) reader.Unsupported(QStringLiteral("EXECUTE ... WITH"));
    return statement;
}

bool IsBareCall(TokenReader& reader) {
    if (reader.AtSign(u".")) return true;
    return reader.Peek().IsName() && !reader.AtSign(u":", 1) && !IsStatementWord(reader.Peek());
}

}  // namespace quarv::localdb::tsql
