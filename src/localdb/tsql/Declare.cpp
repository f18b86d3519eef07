#include "localdb/tsql/Declare.h"

#include "localdb/tsql/CreateTable.h"
#include "localdb/tsql/ExpressionParser.h"

namespace quarv::localdb::tsql {

Declare::Declare() : Statement(StatementType::Declare) {}
Declare::~Declare() = default;

StatementPtr ParseDeclare(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<Declare>();
    if (reader.Peek().IsName()) reader.Unsupported(QStringLiteral("cursor"));
    do {
        Declare::Item item;
        item.line = reader.Line();
        item.name = reader.ExpectVariable();
        reader.TryWord(u"as");
        if (reader.AtWord(u"cursor")) reader.Unsupported(QStringLiteral("cursor"));
        if (reader.TryWord(u"table")) {
            item.table = std::make_unique<CreateTable>();
            item.table->name.name = item.name;
            ParseTableElements(reader, *item.table);
            if (!item.table->foreignKeys.empty()) {
                reader.Unsupported(QStringLiteral("FOREIGN KEY of a table variable"));
            }
        } else {
            item.type = ParseTypeName(reader);
            if (reader.TrySign(u"=")) item.value = ParseExpression(reader);
        }
        statement->items.push_back(std::move(item));
    } while (reader.TrySign(u","));
    return statement;
}

StatementPtr ParseSetVariable(TokenReader& reader) {
    auto statement = std::make_unique<SetVariable>();
    statement->name = reader.ExpectVariable();
    const Token sign = reader.Peek();
    if (reader.TrySign(u"=")) {
        statement->value = ParseExpression(reader);
        return statement;
    }
    for (const QStringView assign : {u"+=", u"-=", u"*=", u"/=", u"%=", u"&=", u"|=", u"^="}) {
        if (!reader.TrySign(assign)) continue;
        auto node = std::make_unique<Arithmetic>();
        node->line = sign.line;
        node->sign = assign[0].unicode();
        node->left = std::make_unique<Variable>(statement->name);
        node->right = ParseExpression(reader);
        node->height = node->right->height + 1;
        statement->value = std::move(node);
        return statement;
    }
    reader.Fail();
}

}  // namespace quarv::localdb::tsql
