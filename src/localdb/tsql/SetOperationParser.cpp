// Set operations and WITH: what a query is made of beyond a single SELECT.
#include <optional>

#include "localdb/tsql/QueryClauses.h"
#include "localdb/tsql/QueryParts.h"

namespace quarv::localdb::tsql {

namespace {

std::unique_ptr<Query> ParseUnion(TokenReader& reader);

std::unique_ptr<Query> ParseOperand(TokenReader& reader) {
    if (!reader.TrySign(u"(")) return ParseSpecification(reader);
    TokenReader::Nesting nesting(reader);
    std::unique_ptr<Query> query = ParseUnion(reader);
    reader.ExpectSign(u")");
    return query;
}

std::optional<SetOperator> TryOperator(TokenReader& reader, bool binding) {
    if (binding) {
        if (!reader.TryWord(u"intersect")) return std::nullopt;
        return SetOperator::Intersect;
    }
    if (reader.TryWord(u"except")) return SetOperator::Except;
    if (!reader.TryWord(u"union")) return std::nullopt;
    return reader.TryWord(u"all") ? SetOperator::UnionAll : SetOperator::Union;
}

// INTERSECT, which is `binding`, goes before UNION and EXCEPT.
std::unique_ptr<Query> ParseLevel(TokenReader& reader, bool binding) {
    const auto next = [&reader, binding] {
        return binding ? ParseOperand(reader) : ParseLevel(reader, true);
    };
    std::unique_ptr<Query> first = next();
    std::optional<SetOperator> sign = TryOperator(reader, binding);
    if (!sign) return first;
    auto query = std::make_unique<Query>();
    query->line = first->line;
    // INTO of the first query takes the rows of all.
    query->into = std::move(first->into);
    query->arms.push_back(std::move(first));
    for (; sign; sign = TryOperator(reader, binding)) {
        query->operators.push_back(*sign);
        query->arms.push_back(next());
    }
    return query;
}

std::unique_ptr<Query> ParseUnion(TokenReader& reader) {
    return ParseLevel(reader, false);
}

CommonTable ParseCommonTable(TokenReader& reader) {
    CommonTable table;
    table.line = reader.Line();
    table.name = reader.ExpectName();
    table.columns = ParseColumnNames(reader);
    reader.ExpectWord(u"as");
    reader.ExpectSign(u"(");
    TokenReader::Nesting nesting(reader);
    table.query = ParseQuery(reader);
    reader.ExpectSign(u")");
    return table;
}

// This server has no form of result for it.
void RefuseFor(TokenReader& reader) {
    if (!reader.AtWord(u"for")) return;
    const QString form = reader.Peek(1).text.toUpper();
    reader.Unsupported(QStringLiteral("FOR ") + form);
}

}  // namespace

bool AtQuery(TokenReader& reader) {
    if (reader.AtWord(u"select")) return true;
    size_t ahead = 0;
    while (reader.AtSign(u"(", ahead)) ++ahead;
    if (ahead == 0 || !reader.AtWord(u"select", ahead)) return false;
    // What follows the parentheses tells a query in them from a value that begins with one.
    for (size_t depth = ahead; depth > 0; ++ahead) {
        if (reader.Peek(ahead).kind == TokenKind::End) return false;
        if (reader.AtSign(u"(", ahead)) ++depth;
        if (reader.AtSign(u")", ahead)) --depth;
    }
    const Token& behind = reader.Peek(ahead);
    return behind.IsSign(u")") || behind.IsWord(u"union") || behind.IsWord(u"except") ||
           behind.IsWord(u"intersect");
}

std::unique_ptr<Query> ParseQuery(TokenReader& reader) {
    TokenReader::Nesting nesting(reader);
    std::unique_ptr<Query> query = ParseUnion(reader);
    ParseOrder(reader, *query);
    RefuseFor(reader);
    if (reader.AtWord(u"compute")) reader.Unsupported(QStringLiteral("COMPUTE"));
    return query;
}

std::unique_ptr<Query> ParseStatementQuery(TokenReader& reader) {
    std::unique_ptr<Query> query = ParseQuery(reader);
    ParseOptions(reader, *query);
    return query;
}

std::unique_ptr<Query> ParseViewQuery(TokenReader& reader) {
    WithClause with;
    if (reader.AtWord(u"with")) with = ParseWithClause(reader);
    std::unique_ptr<Query> query = ParseQuery(reader);
    query->with = std::move(with);
    return query;
}

WithClause ParseWithClause(TokenReader& reader) {
    reader.ExpectWord(u"with");
    WithClause tables;
    do {
        if (reader.AtWord(u"xmlnamespaces")) {
            reader.Unsupported(QStringLiteral("WITH XMLNAMESPACES"));
        }
        tables.push_back(ParseCommonTable(reader));
    } while (reader.TrySign(u","));
    return tables;
}

}  // namespace quarv::localdb::tsql
