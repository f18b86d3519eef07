#include "localdb/tsql/QueryClauses.h"

#include <algorithm>
#include <array>

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/QueryParts.h"

namespace quarv::localdb::tsql {

void ParseTopRows(TokenReader& reader, Query& rows, const QString& statement) {
    ParseTop(reader, rows);
    if (rows.topPercent) reader.Unsupported(statement + QStringLiteral(" TOP ... PERCENT"));
    if (rows.topTies) reader.Unsupported(statement + QStringLiteral(" TOP ... WITH TIES"));
}

void ParseFromAndWhere(TokenReader& reader, Query& rows) {
    if (reader.TryWord(u"from")) {
        do {
            rows.from.push_back(ParseTableSource(reader));
        } while (reader.TrySign(u","));
    }
    if (reader.TryWord(u"where")) {
        if (reader.AtWord(u"current") && reader.AtWord(u"of", 1)) {
            reader.Unsupported(QStringLiteral("WHERE CURRENT OF"));
        }
        rows.where = ParseCondition(reader);
    }
    ParseOptions(reader, rows);
}

ObjectName ParseTableName(TokenReader& reader) {
    if (reader.Peek().kind != TokenKind::Variable) return ParseObjectName(reader, true);
    ObjectName name;
    name.line = reader.Line();
    name.name = reader.Take().text;
    name.isVariable = true;
    return name;
}

void ParseTarget(TokenReader& reader, NamedTable& target) {
    target.line = reader.Line();
    target.name = ParseTableName(reader);
    SkipTableHints(reader);
}

std::vector<QString> ParseColumnNames(TokenReader& reader) {
    std::vector<QString> names;
    if (!reader.TrySign(u"(")) return names;
    do {
        names.push_back(reader.ExpectName());
    } while (reader.TrySign(u","));
    reader.ExpectSign(u")");
    return names;
}

bool AtAssignSign(TokenReader& reader, size_t ahead) {
    while (reader.AtSign(u".", ahead) && reader.Peek(ahead + 1).IsName()) ahead += 2;
    constexpr std::array<QStringView, 9> Signs = {u"=",  u"+=", u"-=", u"*=", u"/=",
                                                  u"%=", u"&=", u"|=", u"^="};
    return std::any_of(Signs.begin(), Signs.end(),
                       [&reader, ahead](QStringView sign) { return reader.AtSign(sign, ahead); });
}

}  // namespace quarv::localdb::tsql
