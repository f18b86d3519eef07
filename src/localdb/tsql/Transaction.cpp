#include "localdb/tsql/Transaction.h"

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

namespace {

bool TryTran(TokenReader& reader) {
    return reader.TryWord(u"transaction") || reader.TryWord(u"tran");
}

void ParseName(TokenReader& reader, Transaction& statement) {
    if (reader.Peek().kind == TokenKind::Variable) {
        statement.variable = reader.Take().text;
        return;
    }
    // A bare name at the end of a statement; the next statement begins with a reserved word.
    if (reader.Peek().IsName() && !reader.AtSign(u":", 1)) statement.name = reader.Take().text;
}

}  // namespace

StatementPtr ParseBeginTransaction(TokenReader& reader) {
    auto statement = std::make_unique<Transaction>();
    if (!TryTran(reader)) reader.Fail();
    ParseName(reader, *statement);
    if (reader.AtWord(u"with")) reader.Unsupported(QStringLiteral("BEGIN TRANSACTION ... WITH"));
    return statement;
}

StatementPtr ParseTransaction(TokenReader& reader) {
    auto statement = std::make_unique<Transaction>();
    const Token verb = reader.Take();
    statement->verb = verb.IsWord(u"commit")     ? TransactionVerb::Commit
                      : verb.IsWord(u"rollback") ? TransactionVerb::Rollback
                                                 : TransactionVerb::Save;
    const bool tran = TryTran(reader);
    if (tran) {
        ParseName(reader, *statement);
    } else if (statement->verb == TransactionVerb::Save) {
        reader.Fail();
    } else {
        reader.TryWord(u"work");
    }
    if (statement->verb == TransactionVerb::Save && statement->name.isEmpty() &&
        statement->variable.isEmpty()) {
        reader.Fail();
    }
    return statement;
}

}  // namespace quarv::localdb::tsql
