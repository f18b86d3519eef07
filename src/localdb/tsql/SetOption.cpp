#include "localdb/tsql/SetOption.h"

#include "localdb/tsql/Declare.h"
#include "localdb/tsql/TokenReader.h"

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
    do {
        if (reader.Peek().kind != TokenKind::Word) reader.Fail();
        statement->names.append(reader.Take().text.toLower());
    } while (reader.TrySign(u","));
    if (statement->names.constFirst() == u"statistics")
        reader.Unsupported(QStringLiteral("SET STATISTICS"));
    if (statement->names.constFirst() == u"identity_insert") {
        statement->table = ParseObjectName(reader);
    }
    statement->value = ParseOptionValue(reader);
    return statement;
}

}  // namespace quarv::localdb::tsql
