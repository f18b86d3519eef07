#include <array>

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/Query.h"
#include "localdb/tsql/QueryClauses.h"

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

SelectItem ParseItem(TokenReader& reader) {
    SelectItem item;
    item.line = reader.Line();
    if (TryStar(reader, item)) return item;
    const TokenKind first = reader.Peek().kind;
    if (reader.AtSign(u"=", 1) && first == TokenKind::Variable) {
        item.variable = reader.Take().text;
        reader.Take();
        item.expression = ParseExpression(reader);
        return item;
    }
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

TableSourcePtr ParseDerived(TokenReader& reader) {
    auto table = std::make_unique<DerivedTable>();
    table->line = reader.Line();
    reader.ExpectSign(u"(");
    TokenReader::Nesting nesting(reader);
    if (!reader.AtWord(u"select")) {
        RefuseWord(reader, {u"values"});
        TableSourcePtr inner = ParseJoined(reader);
        reader.ExpectSign(u")");
        return inner;
    }
    table->query = ParseQuery(reader);
    reader.ExpectSign(u")");
    table->alias = ParseAlias(reader, false);
    if (table->alias.isEmpty()) reader.Fail();
    if (reader.TrySign(u"(")) {
        do {
            table->columns.push_back(reader.ExpectName());
        } while (reader.TrySign(u","));
        reader.ExpectSign(u")");
    }
    return table;
}

}  // namespace

// Locking hints change no result here: a reader sees what is committed and blocks nobody.
void SkipTableHints(TokenReader& reader) {
    const bool with = reader.AtWord(u"with") && reader.AtSign(u"(", 1);
    const bool bare = reader.AtSign(u"(") && reader.AtWord(u"nolock", 1) && reader.AtSign(u")", 2);
    if (!with && !bare) return;
    if (with) reader.Take();
    reader.Take();
    constexpr std::array<QStringView, 10> Harmless = {
        u"nolock",  u"rowlock",  u"paglock",       u"updlock",         u"holdlock",
        u"tablock", u"tablockx", u"readcommitted", u"readuncommitted", u"serializable"};
    do {
        bool known = false;
        for (const QStringView hint : Harmless) known = known || reader.TryWord(hint);
        if (!known) reader.Unsupported(reader.Peek().text.toUpper());
    } while (reader.TrySign(u","));
    reader.ExpectSign(u")");
}

namespace {

TableSourcePtr ParseTable(TokenReader& reader) {
    if (reader.AtSign(u"(")) return ParseDerived(reader);
    auto table = std::make_unique<NamedTable>();
    table->line = reader.Line();
    table->name = ParseTableName(reader);
    if (reader.AtSign(u"(") && !reader.AtWord(u"nolock", 1)) {
        reader.Unsupported(QStringLiteral("table-valued function"));
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
    if (reader.AtWord(u"cross")) {
        reader.Take();
        RefuseWord(reader, {u"apply"});
        reader.ExpectWord(u"join");
        return {JoinKind::Cross, true};
    }
    if (reader.AtWord(u"outer")) {
        reader.Take();
        RefuseWord(reader, {u"apply"});
        reader.Fail();
    }
    for (const Entry& entry : Table) {
        if (!reader.TryWord(entry.word)) continue;
        if (entry.outer) reader.TryWord(u"outer");
        RefuseWord(reader, {u"hash", u"loop", u"merge", u"remote"});
        reader.ExpectWord(u"join");
        return {entry.kind, true};
    }
    return {JoinKind::Inner, false};
}

TableSourcePtr ParseJoined(TokenReader& reader) {
    TableSourcePtr left = ParseTable(reader);
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
        if (words.kind != JoinKind::Cross) {
            reader.ExpectWord(u"on");
            join->on = ParseCondition(reader);
        }
        left = std::move(join);
    }
}

}  // namespace

SelectItem ParseSelectItem(TokenReader& reader) {
    return ParseItem(reader);
}

TableSourcePtr ParseTableSource(TokenReader& reader) {
    return ParseJoined(reader);
}

void ParseTop(TokenReader& reader, Query& query) {
    if (!reader.TryWord(u"top")) return;
    if (reader.TrySign(u"(")) {
        query.top = ParseExpression(reader);
        reader.ExpectSign(u")");
    } else {
        query.top = TryLiteral(reader);
        if (!query.top) reader.Fail();
    }
    RefuseWord(reader, {u"percent"});
    if (reader.AtWord(u"with") && reader.AtWord(u"ties", 1)) {
        reader.Unsupported(QStringLiteral("WITH TIES"));
    }
}

namespace {

void ParseGrouping(TokenReader& reader, Query& query) {
    if (reader.TryWord(u"group")) {
        reader.ExpectWord(u"by");
        do {
            query.groupBy.push_back(ParseExpression(reader));
        } while (reader.TrySign(u","));
        if (reader.AtWord(u"with")) reader.Unsupported(QStringLiteral("GROUP BY ... WITH"));
    }
    if (reader.TryWord(u"having")) query.having = ParseCondition(reader);
}

void ParseOrder(TokenReader& reader, Query& query) {
    if (!reader.TryWord(u"order")) return;
    reader.ExpectWord(u"by");
    do {
        OrderItem item;
        item.expression = ParseExpression(reader);
        item.descending = reader.TryWord(u"desc");
        if (!item.descending) reader.TryWord(u"asc");
        query.orderBy.push_back(std::move(item));
    } while (reader.TrySign(u","));
    if (!reader.TryWord(u"offset")) return;
    query.offset = ParseExpression(reader);
    if (!reader.TryWord(u"rows")) reader.ExpectWord(u"row");
    if (!reader.TryWord(u"fetch")) return;
    if (!reader.TryWord(u"next")) reader.ExpectWord(u"first");
    query.fetch = ParseExpression(reader);
    if (!reader.TryWord(u"rows")) reader.ExpectWord(u"row");
    reader.ExpectWord(u"only");
}

}  // namespace

std::unique_ptr<Query> ParseQuery(TokenReader& reader) {
    TokenReader::Nesting nesting(reader);
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
    RefuseWord(reader, {u"union", u"except", u"intersect"});
    ParseOrder(reader, *query);
    RefuseWord(reader, {u"for", u"option", u"compute"});
    return query;
}

}  // namespace quarv::localdb::tsql
