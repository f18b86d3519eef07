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
    if (reader.AtWord(u"bulk")) reader.Unsupported(QStringLiteral("INSERT BULK"));
    insert->limit.line = reader.Line();
    ParseTopRows(reader, insert->limit, QStringLiteral("INSERT"));
    reader.TryWord(u"into");
    insert->table = ParseTableName(reader);
    SkipTableHints(reader);
    // A parenthesis may also open a query.
    if (!reader.AtWord(u"select", 1)) insert->columns = ParseColumnNames(reader);
    insert->output = ParseOutput(reader);
    if (reader.TryWord(u"values")) {
        ParseRows(reader, *insert);
    } else if (reader.TryWord(u"default")) {
        reader.ExpectWord(u"values");
    } else if (AtQuery(reader)) {
        insert->query = ParseStatementQuery(reader);
    } else if (reader.AtWord(u"exec") || reader.AtWord(u"execute")) {
        const int line = reader.Line();
        insert->execute.reset(static_cast<Execute*>(ParseExecute(reader).release()));
        insert->execute->line = line;
    } else {
        reader.Fail();
    }
    return insert;
}

}  // namespace quarv::localdb::tsql
