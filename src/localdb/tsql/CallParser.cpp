#include "localdb/tsql/CallParser.h"

#include <algorithm>

#include "localdb/tsql/ExpressionNode.h"
#include "localdb/tsql/ExpressionParser.h"

namespace quarv::localdb::tsql {

ExpressionPtr ParseIif(TokenReader& reader) {
    auto node = Make<Case>(reader.Line());
    reader.Take();
    reader.ExpectSign(u"(");
    Case::Branch branch;
    branch.when = ParseCondition(reader);
    reader.ExpectSign(u",");
    branch.then = ParseExpression(reader);
    reader.ExpectSign(u",");
    node->otherwise = ParseExpression(reader);
    reader.ExpectSign(u")");
    const Expression *when = branch.when.get(), *then = branch.then.get();
    const Expression* otherwise = node->otherwise.get();
    node->branches.push_back(std::move(branch));
    return Finish(reader, std::move(node), {when, then, otherwise});
}

ExpressionPtr ParseTrim(TokenReader& reader) {
    auto node = Make<Function>(reader.Line());
    node->name = reader.Take().text;
    reader.ExpectSign(u"(");
    // The words are no names here unless the call goes on as with a column of that name.
    for (const QStringView side : {u"leading", u"trailing", u"both"}) {
        if (!reader.AtWord(side) || reader.AtSign(u")", 1) || reader.AtWord(u"from", 1)) continue;
        reader.Take();
        if (side == u"leading") node->name = QStringLiteral("ltrim");
        if (side == u"trailing") node->name = QStringLiteral("rtrim");
        break;
    }
    ExpressionPtr first = ParseExpression(reader);
    if (reader.TryWord(u"from")) {
        node->arguments.push_back(ParseExpression(reader));
        node->height = std::max(node->height, node->arguments.front()->height + 1);
    }
    node->height = std::max(node->height, first->height + 1);
    node->arguments.push_back(std::move(first));
    reader.ExpectSign(u")");
    return Finish(reader, std::move(node), {});
}

ExpressionPtr RefuseCall(TokenReader& reader) {
    reader.Unsupported(reader.Peek().text.toUpper());
}

}  // namespace quarv::localdb::tsql
