#include "localdb/tsql/SchemaStatement.h"

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

StatementPtr ParseCreateSchema(TokenReader& reader) {
    const Token first = reader.Take();
    if (!reader.IsFirst(first)) {
        throw SyntaxError(SyntaxError::MustBeFirst, {QStringLiteral("CREATE SCHEMA")}, first.line,
                          first.column);
    }
    reader.Take();
    auto statement = std::make_unique<SchemaStatement>();
    if (!reader.AtWord(u"authorization")) statement->name = reader.ExpectName();
    if (reader.TryWord(u"authorization")) statement->owner = reader.ExpectName();
    // A schema that has only an owner is named after him.
    if (statement->name.isEmpty()) statement->name = statement->owner;
    for (const QStringView word : {u"create", u"grant", u"revoke", u"deny"}) {
        if (!reader.AtWord(word)) continue;
        QString element = word.toString().toUpper();
        if (word == u"create") element += u' ' + reader.Peek(1).text.toUpper();
        reader.Unsupported(QStringLiteral("CREATE SCHEMA ... ") + element);
    }
    return statement;
}

StatementPtr ParseDropSchema(TokenReader& reader) {
    reader.Take();
    reader.Take();
    auto statement = std::make_unique<SchemaStatement>();
    statement->verb = SchemaVerb::Drop;
    if (reader.TryWord(u"if")) {
        reader.ExpectWord(u"exists");
        statement->ifExists = true;
    }
    statement->name = reader.ExpectName();
    return statement;
}

StatementPtr ParseAlterSchema(TokenReader& reader) {
    reader.Take();
    reader.Take();
    auto statement = std::make_unique<SchemaStatement>();
    statement->verb = SchemaVerb::Transfer;
    statement->name = reader.ExpectName();
    reader.ExpectWord(u"transfer");
    if (reader.AtWord(u"xml")) reader.Unsupported(QStringLiteral("XML SCHEMA COLLECTION"));
    if (reader.AtSign(u"::", 1)) {
        statement->transfersType = reader.AtWord(u"type");
        if (!statement->transfersType && !reader.AtWord(u"object")) reader.Fail();
        reader.Take();
        reader.Take();
    }
    statement->object = ParseObjectName(reader);
    return statement;
}

}  // namespace quarv::localdb::tsql
