#include "localdb/tsql/SetOption.h"

#include "localdb/tsql/Declare.h"
#include "localdb/tsql/ExpressionParser.h"

namespace quarv::localdb::tsql {

namespace {

QString ParseIsolationLevel(TokenReader& reader) {
    reader.ExpectWord(u"isolation");
    reader.ExpectWord(u"level");
    if (reader.TryWord(u"read")) {
        if (reader.TryWord(u"committed")) return QStringLiteral("read committed");
        reader.ExpectWord(u"uncommitted");
        return QStringLiteral("read uncommitted");
    }
    if (reader.TryWord(u"repeatable")) {
        reader.ExpectWord(u"read");
        return QStringLiteral("repeatable read");
    }
    if (reader.TryWord(u"snapshot")) return QStringLiteral("snapshot");
    reader.ExpectWord(u"serializable");
    return QStringLiteral("serializable");
}

void ParseNames(TokenReader& reader, SetOption& statement) {
    QString before;
    if (reader.TryWord(u"statistics")) before = QStringLiteral("statistics ");
    do {
        if (reader.Peek().kind != TokenKind::Word) reader.Fail();
        statement.names.append(before + reader.Take().text.toLower());
    } while (reader.TrySign(u","));
}

QString ParseOptionValue(TokenReader& reader) {
    const Token& token = reader.Peek();
    QString sign;
    if (token.IsSign(u"-")) sign = reader.Take().text;
    switch (reader.Peek().kind) {
        case TokenKind::Word:
        case TokenKind::QuotedName:
        case TokenKind::String:
        case TokenKind::NationalString:
        case TokenKind::Integer:
            return sign + reader.Take().text.toLower();
        default:
            reader.Fail();
    }
}

}  // namespace

StatementPtr ParseSet(TokenReader& reader) {
    reader.Take();
    if (reader.Peek().kind == TokenKind::Variable) return ParseSetVariable(reader);
    auto statement = std::make_unique<SetOption>();
    if (reader.TryWord(u"transaction")) {
        statement->names.append(QStringLiteral("transaction isolation level"));
        statement->value = ParseIsolationLevel(reader);
        return statement;
    }
    ParseNames(reader, *statement);
    const QString& first = statement->names.constFirst();
    if (first == u"identity_insert") statement->table = ParseObjectName(reader);
    const Token& value = reader.Peek();
    const int line = value.line;
    if (value.kind == TokenKind::Variable) {
        statement->operand = std::make_unique<Variable>(reader.Take().text);
        statement->operand->line = line;
    } else if (value.kind == TokenKind::Binary) {
        statement->operand = ParseConstant(reader);
    } else {
        statement->value = ParseOptionValue(reader);
    }
    return statement;
}

}  // namespace quarv::localdb::tsql
