#include "localdb/tsql/Update.h"

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/QueryClauses.h"

namespace quarv::localdb::tsql {

namespace {

// "=" or a compound sign; gives the operator of the compound, else 0.
char16_t TakeAssignSign(TokenReader& reader) {
    if (reader.TrySign(u"=")) return 0;
    for (const QStringView sign : {u"+=", u"-=", u"*=", u"/=", u"%=", u"&=", u"|=", u"^="}) {
        if (reader.TrySign(sign)) return sign[0].unicode();
    }
    reader.Fail();
}

Update::Assignment ParseAssignment(TokenReader& reader) {
    Update::Assignment assignment;
    assignment.line = reader.Line();
    if (reader.Peek().kind == TokenKind::Variable) {
        assignment.variable = reader.Take().text;
        // "@v = c = 1" assigns to both; in "@v = c" the column is the value.
        const bool both = reader.AtSign(u"=") && reader.Peek(1).IsName() && AtAssignSign(reader, 2);
        if (!both) {
            assignment.sign = TakeAssignSign(reader);
            assignment.value = ParseExpression(reader);
            return assignment;
        }
        reader.Take();
    }
    assignment.column = ParseObjectName(reader);
    if (reader.AtSign(u"(")) reader.Unsupported(QStringLiteral(".WRITE"));
    assignment.sign = TakeAssignSign(reader);
    assignment.value = ParseValueOrDefault(reader);
    return assignment;
}

}  // namespace

StatementPtr ParseUpdate(TokenReader& reader) {
    if (reader.AtWord(u"statistics", 1)) reader.Unsupported(QStringLiteral("UPDATE STATISTICS"));
    reader.Take();
    auto update = std::make_unique<Update>();
    update->rows.line = reader.Line();
    ParseTopRows(reader, update->rows, QStringLiteral("UPDATE"));
    ParseTarget(reader, update->target);
    reader.ExpectWord(u"set");
    do {
        update->assignments.push_back(ParseAssignment(reader));
    } while (reader.TrySign(u","));
    update->output = ParseOutput(reader);
    ParseFromAndWhere(reader, update->rows);
    return update;
}

}  // namespace quarv::localdb::tsql
