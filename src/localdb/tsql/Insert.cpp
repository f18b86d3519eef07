#include "localdb/tsql/Insert.h"

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/QueryClauses.h"

namespace quarv::localdb::tsql {

namespace {

ExpressionList ParseRow(TokenReader& reader) {
    ExpressionList row;
    reader.ExpectSign(u"(");
    do {
        row.push_back(ParseValueOrDefault(reader));
    } while (reader.TrySign(u","));
    reader.ExpectSign(u")");
    return row;
}

void ParseRows(TokenReader& reader, Insert& insert) {
    do {
        if (insert.rows.size() == Insert::MaxRows) {
            throw SyntaxError(SyntaxError::TooManyRows, {}, reader.Line(), reader.Peek().column);
        }
        insert.rows.push_back(ParseRow(reader));
    } while (reader.TrySign(u","));
}

}  // namespace

StatementPtr ParseInsert(TokenReader& reader) {
    reader.Take();
    auto insert = std::make_unique<Insert>();
    for (const QStringView word : {u"top", u"bulk"}) {
        if (reader.AtWord(word))
            reader.Unsupported(QStringLiteral("INSERT ") + word.toString().toUpper());
    }
    reader.TryWord(u"into");
    insert->table = ParseTableName(reader);
    SkipTableHints(reader);
    // A parenthesis may also open a query.
    if (!reader.AtWord(u"select", 1)) insert->columns = ParseColumnNames(reader);
    if (reader.AtWord(u"output")) reader.Unsupported(QStringLiteral("OUTPUT"));
    if (reader.TryWord(u"values")) {
        ParseRows(reader, *insert);
    } else if (reader.TryWord(u"default")) {
        reader.ExpectWord(u"values");
    } else if (reader.AtWord(u"select")) {
        insert->query = ParseQuery(reader);
    } else if (reader.AtWord(u"exec") || reader.AtWord(u"execute")) {
        reader.Unsupported(QStringLiteral("INSERT ... EXECUTE"));
    } else {
        reader.Fail();
    }
    return insert;
}

}  // namespace quarv::localdb::tsql
