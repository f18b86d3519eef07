#include <array>

#include "localdb/tsql/ExpressionNode.h"
#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/QueryClauses.h"
#include "localdb/tsql/QueryParts.h"

namespace quarv::localdb::tsql {

namespace {

// Words of a query that this server does not have, refused where they stand.
void RefuseWord(TokenReader& reader, std::initializer_list<QStringView> words) {
    for (const QStringView word : words) {
        if (reader.AtWord(word)) reader.Unsupported(word.toString().toUpper());
    }
}

// [AS] name, or an alias given as a string.
QString ParseAlias(TokenReader& reader, bool stringsToo) {
    const bool as = reader.TryWord(u"as");
    const Token& token = reader.Peek();
    if (token.IsName() || (stringsToo && (token.kind == TokenKind::String ||
                                          token.kind == TokenKind::NationalString))) {
        return reader.Take().text;
    }
    if (as) reader.Fail();
    return {};
}

// "*" or "name.*": tells by looking ahead.
bool TryStar(TokenReader& reader, SelectItem& item) {
    size_t ahead = 0;
    while (reader.Peek(ahead).IsName() && reader.AtSign(u".", ahead + 1)) ahead += 2;
    if (!reader.AtSign(u"*", ahead)) return false;
    std::vector<QString> parts;
    for (; ahead > 0; ahead -= 2) {
        parts.push_back(reader.Take().text);
        reader.Take();
    }
    reader.Take();
    item.qualifier.line = item.line;
    if (parts.size() > 2) reader.Unsupported(QStringLiteral("database name in front of *"));
    if (!parts.empty()) item.qualifier.name = parts.back();
    if (parts.size() == 2) item.qualifier.schema = parts.front();
    return true;
}

// @x = expression, and @x += expression in its eight forms.
bool TryAssignment(TokenReader& reader, SelectItem& item) {
    const Token sign = reader.Peek(1);
    const bool compound = sign.kind == TokenKind::Sign && sign.text.size() == 2 &&
                          sign.text[1] == u'=' && QStringView(u"+-*/%&|^").contains(sign.text[0]);
    if (!compound && !sign.IsSign(u"=")) return false;
    item.variable = reader.Take().text;
    reader.Take();
    item.expression = ParseExpression(reader);
    if (!compound) return true;
    auto node = Make<Arithmetic>(item.line);
    node->sign = sign.text[0].unicode();
    node->left = std::make_unique<Variable>(item.variable);
    node->right = std::move(item.expression);
    const Expression* right = node->right.get();
    item.expression = Finish(reader, std::move(node), {right});
    return true;
}

SelectItem ParseItem(TokenReader& reader) {
    SelectItem item;
    item.line = reader.Line();
    if (TryStar(reader, item)) return item;
    const TokenKind first = reader.Peek().kind;
    if (first == TokenKind::Variable && TryAssignment(reader, item)) return item;
    const bool named = reader.Peek().IsName() || first == TokenKind::String;
    if (reader.AtSign(u"=", 1) && named) {
        item.alias = reader.Take().text;
        reader.Take();
        item.expression = ParseExpression(reader);
        return item;
    }
    item.expression = ParseExpression(reader);
    item.alias = ParseAlias(reader, true);
    return item;
}

TableSourcePtr ParseJoined(TokenReader& reader);

void ParseRows(TokenReader& reader, DerivedTable& table) {
    do {
        reader.ExpectSign(u"(");
        table.rows.push_back(ParseList(reader));
        reader.ExpectSign(u")");
    } while (reader.TrySign(u","));
}

TableSourcePtr ParseDerived(TokenReader& reader) {
    auto table = std::make_unique<DerivedTable>();
    table->line = reader.Line();
    reader.ExpectSign(u"(");
    TokenReader::Nesting nesting(reader);
    if (reader.TryWord(u"values")) {
        ParseRows(reader, *table);
    } else if (AtQuery(reader)) {
        table->query = ParseQuery(reader);
    } else {
        TableSourcePtr inner = ParseJoined(reader);
        reader.ExpectSign(u")");
        return inner;
    }
    reader.ExpectSign(u")");
    table->alias = ParseAlias(reader, false);
    if (table->alias.isEmpty()) reader.Fail();
    table->columns = ParseColumnNames(reader);
    RefuseWord(reader, {u"pivot", u"unpivot", u"tablesample"});
    return table;
}

TableSourcePtr ParseFunctionTable(TokenReader& reader, const ObjectName& name) {
    auto table = std::make_unique<DerivedTable>();
    table->line = name.line;
    table->function = Make<Function>(name.line);
    table->function->name = name.name;
    reader.ExpectSign(u"(");
    TokenReader::Nesting nesting(reader);
    if (!reader.AtSign(u")")) table->function->arguments = ParseList(reader);
    reader.ExpectSign(u")");
    table->alias = ParseAlias(reader, false);
    if (!table->alias.isEmpty()) table->columns = ParseColumnNames(reader);
    return table;
}

TableSourcePtr ParseTable(TokenReader& reader) {
    if (reader.AtSign(u"(")) return ParseDerived(reader);
    auto table = std::make_unique<NamedTable>();
    table->line = reader.Line();
    table->name = ParseTableName(reader);
    if (reader.AtSign(u"(") && !reader.AtWord(u"nolock", 1)) {
        if (IsTableFunction(table->name)) return ParseFunctionTable(reader, table->name);
        const QString name = table->name.schema.isEmpty() ? table->name.name.toUpper() : QString();
        const bool known = name == u"OPENJSON" || name == u"OPENROWSET" || name == u"OPENQUERY" ||
                           name == u"OPENXML" || name == u"CONTAINSTABLE" ||
                           name == u"FREETEXTTABLE";
        reader.Unsupported(known ? name : QStringLiteral("table-valued function"));
    }
    table->alias = ParseAlias(reader, false);
    SkipTableHints(reader);
    RefuseWord(reader, {u"pivot", u"unpivot", u"tablesample"});
    return table;
}

struct JoinWords {
    JoinKind kind;
    bool found;
};

JoinWords TakeJoinWords(TokenReader& reader) {
    struct Entry {
        QStringView word;
        JoinKind kind;
        bool outer;
    };
    static constexpr std::array<Entry, 4> Table = {{{u"inner", JoinKind::Inner, false},
                                                    {u"left", JoinKind::Left, true},
                                                    {u"right", JoinKind::Right, true},
                                                    {u"full", JoinKind::Full, true}}};
    if (reader.TryWord(u"join")) return {JoinKind::Inner, true};
    if (reader.TryWord(u"cross")) {
        if (reader.TryWord(u"apply")) return {JoinKind::CrossApply, true};
        reader.ExpectWord(u"join");
        return {JoinKind::Cross, true};
    }
    if (reader.TryWord(u"outer")) {
        reader.ExpectWord(u"apply");
        return {JoinKind::OuterApply, true};
    }
    for (const Entry& entry : Table) {
        if (!reader.TryWord(entry.word)) continue;
        if (entry.outer) reader.TryWord(u"outer");
        SkipJoinHint(reader);
        reader.ExpectWord(u"join");
        return {entry.kind, true};
    }
    return {JoinKind::Inner, false};
}

// The joins behind `left`. ON belongs to the last join that still waits for one.
TableSourcePtr ParseJoins(TokenReader& reader, TableSourcePtr left) {
    int joins = 0;
    while (true) {
        const int line = reader.Line();
        const JoinWords words = TakeJoinWords(reader);
        if (!words.found) return left;
        if (++joins > TokenReader::MaxDepth) {
            throw SyntaxError(SyntaxError::TooDeep, {}, line, reader.Peek().column);
        }
        auto join = std::make_unique<Join>();
        join->line = line;
        join->join = words.kind;
        join->left = std::move(left);
        join->right = ParseTable(reader);
        if (words.kind < JoinKind::Cross) {
            TokenReader::Nesting nesting(reader);
            if (!reader.AtWord(u"on")) join->right = ParseJoins(reader, std::move(join->right));
            reader.ExpectWord(u"on");
            join->on = ParseCondition(reader);
        }
        left = std::move(join);
    }
}

TableSourcePtr ParseJoined(TokenReader& reader) {
    return ParseJoins(reader, ParseTable(reader));
}

}  // namespace

bool IsTableFunction(const ObjectName& name) {
    if (!name.schema.isEmpty() || !name.database.isEmpty() || name.isVariable) return false;
    return name.name.compare(u"string_split", Qt::CaseInsensitive) == 0 ||
           name.name.compare(u"generate_series", Qt::CaseInsensitive) == 0;
}

SelectItem ParseSelectItem(TokenReader& reader) {
    return ParseItem(reader);
}

TableSourcePtr ParseTableSource(TokenReader& reader) {
    return ParseJoined(reader);
}

void ParseTop(TokenReader& reader, Query& query) {
    if (!reader.TryWord(u"top")) return;
    if (reader.TrySign(u"(")) {
        if (reader.AtWord(u"select")) {
            auto subquery = Make<Subquery>(reader.Line());
            subquery->query = ParseQuery(reader);
            query.top = std::move(subquery);
        } else {
            query.top = ParseExpression(reader);
        }
        reader.ExpectSign(u")");
    } else {
        query.top = TryLiteral(reader);
        if (!query.top) reader.Fail();
    }
    query.topPercent = reader.TryWord(u"percent");
    query.topTies = reader.AtWord(u"with") && reader.AtWord(u"ties", 1);
    if (!query.topTies) return;
    reader.Take();
    reader.Take();
}

std::vector<OrderItem> ParseOrderList(TokenReader& reader) {
    reader.ExpectWord(u"by");
    std::vector<OrderItem> order;
    do {
        OrderItem item;
        item.expression = ParseExpression(reader);
        item.descending = reader.TryWord(u"desc");
        if (!item.descending) reader.TryWord(u"asc");
        order.push_back(std::move(item));
    } while (reader.TrySign(u","));
    return order;
}

void ParseOrder(TokenReader& reader, Query& query) {
    if (!reader.TryWord(u"order")) return;
    query.orderBy = ParseOrderList(reader);
    if (!reader.TryWord(u"offset")) return;
    query.offset = ParseExpression(reader);
    if (!reader.TryWord(u"rows")) reader.ExpectWord(u"row");
    if (!reader.TryWord(u"fetch")) return;
    if (!reader.TryWord(u"next")) reader.ExpectWord(u"first");
    query.fetch = ParseExpression(reader);
    if (!reader.TryWord(u"rows")) reader.ExpectWord(u"row");
    reader.ExpectWord(u"only");
}

std::unique_ptr<Query> ParseSpecification(TokenReader& reader) {
    auto query = std::make_unique<Query>();
    query->line = reader.Line();
    reader.ExpectWord(u"select");
    query->distinct = reader.TryWord(u"distinct");
    if (!query->distinct) reader.TryWord(u"all");
    ParseTop(reader, *query);
    do {
        if (query->items.size() == Query::MaxItems) {
            throw SyntaxError(SyntaxError::TooManyItems, {}, reader.Line(), reader.Peek().column);
        }
        query->items.push_back(ParseItem(reader));
    } while (reader.TrySign(u","));
    if (reader.TryWord(u"into")) {
        query->into = std::make_unique<ObjectName>(ParseObjectName(reader, true));
    }
    if (reader.TryWord(u"from")) {
        do {
            query->from.push_back(ParseJoined(reader));
        } while (reader.TrySign(u","));
    }
    if (reader.TryWord(u"where")) query->where = ParseCondition(reader);
    ParseGrouping(reader, *query);
    return query;
}

}  // namespace quarv::localdb::tsql
