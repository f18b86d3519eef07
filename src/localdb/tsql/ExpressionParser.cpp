#include "localdb/tsql/ExpressionParser.h"

#include <algorithm>
#include <array>

#include "localdb/tsql/CallParser.h"
#include "localdb/tsql/ExpressionNode.h"
#include "localdb/tsql/Query.h"
#include "localdb/tsql/Window.h"

namespace quarv::localdb::tsql {

namespace {

ExpressionPtr Finish(TokenReader& reader, std::unique_ptr<Function> node) {
    for (const ExpressionPtr& part : node->arguments) {
        node->height = std::max(node->height, part->height + 1);
    }
    return Finish(reader, std::move(node), {});
}

ExpressionPtr ParseOperand(TokenReader& reader);

ExpressionPtr ParseSigned(TokenReader& reader) {
    for (const char16_t sign : {u'-', u'+', u'~'}) {
        if (!reader.AtSign(QStringView(&sign, 1))) continue;
        auto node = Make<Negate>(reader.Line());
        reader.Take();
        TokenReader::Nesting nesting(reader);
        node->sign = sign;
        node->operand = ParseSigned(reader);
        const Expression* operand = node->operand.get();
        return Finish(reader, std::move(node), {operand});
    }
    return ParseOperand(reader);
}

// Reads `(sign next)*` behind `left` for the signs of one level of precedence.
template <class Next>
ExpressionPtr ParseChain(TokenReader& reader, QStringView signs, ExpressionPtr left, Next next) {
    while (reader.Peek().kind == TokenKind::Sign && reader.Peek().text.size() == 1 &&
           signs.contains(reader.Peek().text[0])) {
        auto node = Make<Arithmetic>(reader.Line());
        node->sign = reader.Take().text[0].unicode();
        node->left = std::move(left);
        node->right = next(reader);
        const Expression *a = node->left.get(), *b = node->right.get();
        left = Finish(reader, std::move(node), {a, b});
    }
    return left;
}

ExpressionPtr ContinueProduct(TokenReader& reader, ExpressionPtr left) {
    return ParseChain(reader, u"*/%", std::move(left), ParseSigned);
}

ExpressionPtr ContinueSum(TokenReader& reader, ExpressionPtr left) {
    return ParseChain(reader, u"+-&|^", std::move(left),
                      [](TokenReader& r) { return ContinueProduct(r, ParseSigned(r)); });
}

ExpressionPtr ParseCast(TokenReader& reader) {
    auto node = Make<Cast>(reader.Line());
    node->nullOnError = reader.Take().text.startsWith(u"try", Qt::CaseInsensitive);
    reader.ExpectSign(u"(");
    node->operand = ParseExpression(reader);
    reader.ExpectWord(u"as");
    node->type = ParseTypeName(reader);
    reader.ExpectSign(u")");
    const Expression* operand = node->operand.get();
    return Finish(reader, std::move(node), {operand});
}

ExpressionPtr ParseConvert(TokenReader& reader) {
    auto node = Make<Cast>(reader.Line());
    node->nullOnError = reader.Take().text.startsWith(u"try", Qt::CaseInsensitive);
    reader.ExpectSign(u"(");
    node->type = ParseTypeName(reader);
    reader.ExpectSign(u",");
    node->operand = ParseExpression(reader);
    if (reader.TrySign(u",")) node->style = ParseExpression(reader);
    reader.ExpectSign(u")");
    const Expression *operand = node->operand.get(), *style = node->style.get();
    return Finish(reader, std::move(node), {operand, style});
}

ExpressionPtr ParseCase(TokenReader& reader) {
    auto node = Make<Case>(reader.Line());
    reader.Take();
    int height = 0;
    auto seen = [&height](const ExpressionPtr& part) { height = std::max(height, part->height); };
    if (!reader.AtWord(u"when")) seen(node->operand = ParseExpression(reader));
    while (reader.TryWord(u"when")) {
        Case::Branch branch;
        branch.when = node->operand ? ParseExpression(reader) : ParseCondition(reader);
        reader.ExpectWord(u"then");
        branch.then = ParseExpression(reader);
        seen(branch.when);
        seen(branch.then);
        node->branches.push_back(std::move(branch));
    }
    if (node->branches.empty()) reader.Fail();
    if (reader.TryWord(u"else")) seen(node->otherwise = ParseExpression(reader));
    reader.ExpectWord(u"end");
    node->height = height + 1;
    return Finish(reader, std::move(node), {});
}

ExpressionPtr ParseFunction(TokenReader& reader) {
    auto node = Make<Function>(reader.Line());
    node->name = reader.Take().text;
    reader.ExpectSign(u"(");
    if (reader.TrySign(u"*")) {
        node->star = true;
    } else if (!reader.AtSign(u")")) {
        node->distinct = reader.TryWord(u"distinct");
        if (!node->distinct) reader.TryWord(u"all");
        node->arguments = ParseList(reader);
    }
    reader.ExpectSign(u")");
    ParseFunctionTail(reader, *node);
    return Finish(reader, std::move(node));
}

// The functions that are called without parentheses ("CURRENT_TIMESTAMP", "USER", ...).
bool IsBareFunction(const Token& token) {
    constexpr std::array<QStringView, 5> Names = {u"current_timestamp", u"current_user",
                                                  u"session_user", u"system_user", u"user"};
    return std::any_of(Names.begin(), Names.end(),
                       [&token](QStringView name) { return token.IsWord(name); });
}

// The reserved words that are functions all the same.
bool IsFunctionWord(const Token& token) {
    constexpr std::array<QStringView, 5> Names = {u"coalesce", u"left", u"nullif", u"right",
                                                  u"contains"};
    return token.IsName() || std::any_of(Names.begin(), Names.end(),
                                         [&token](QStringView name) { return token.IsWord(name); });
}

ExpressionPtr ParseParenthesis(TokenReader& reader) {
    const int line = reader.Line();
    reader.ExpectSign(u"(");
    TokenReader::Nesting nesting(reader);
    if (AtQuery(reader)) {
        auto node = Make<Subquery>(line);
        node->query = ParseQuery(reader);
        reader.ExpectSign(u")");
        return node;
    }
    ExpressionPtr inner = ParseExpression(reader);
    reader.ExpectSign(u")");
    return inner;
}

using WordParser = ExpressionPtr (*)(TokenReader&);

WordParser FindWordParser(TokenReader& reader) {
    struct Entry {
        QStringView word;
        WordParser parse;
    };
    static constexpr std::array<Entry, 9> Table = {{{u"case", ParseCase},
                                                    {u"cast", ParseCast},
                                                    {u"try_cast", ParseCast},
                                                    {u"convert", ParseConvert},
                                                    {u"try_convert", ParseConvert},
                                                    {u"iif", ParseIif},
                                                    {u"trim", ParseTrim},
                                                    {u"parse", RefuseCall},
                                                    {u"try_parse", RefuseCall}}};
    for (const Entry& entry : Table) {
        const bool call = entry.parse == ParseCase || reader.AtSign(u"(", 1);
        if (call && reader.AtWord(entry.word)) return entry.parse;
    }
    return nullptr;
}

ExpressionPtr ParsePrimary(TokenReader& reader) {
    const Token& token = reader.Peek();
    const int line = token.line;
    if (ExpressionPtr literal = TryLiteral(reader)) return literal;
    ExpressionPtr node;
    if (token.kind == TokenKind::Variable) {
        node = std::make_unique<Variable>(reader.Take().text);
    } else if (token.IsSign(u"(")) {
        return ParseParenthesis(reader);
    } else if (const WordParser parse = FindWordParser(reader)) {
        TokenReader::Nesting nesting(reader);
        return parse(reader);
    } else if (reader.AtSign(u"(", 1) && IsFunctionWord(token)) {
        TokenReader::Nesting nesting(reader);
        return ParseFunction(reader);
    } else if (IsBareFunction(token)) {
        auto call = Make<Function>(line);
        call->name = reader.Take().text;
        return call;
    } else if (token.IsName()) {
        node = std::make_unique<ColumnName>(ParseObjectName(reader));
    } else {
        reader.Fail();
    }
    node->line = line;
    return node;
}

// COLLATE binds closer than any sign.
ExpressionPtr ContinueOperand(TokenReader& reader, ExpressionPtr operand) {
    while (reader.AtWord(u"collate")) {
        auto node = Make<Collate>(reader.Line());
        reader.Take();
        node->collation = reader.ExpectName();
        node->operand = std::move(operand);
        const Expression* part = node->operand.get();
        operand = Finish(reader, std::move(node), {part});
    }
    if (reader.AtWord(u"at") && reader.AtWord(u"time", 1) && reader.AtWord(u"zone", 2)) {
        reader.Unsupported(QStringLiteral("AT TIME ZONE"));
    }
    return operand;
}

ExpressionPtr ParseOperand(TokenReader& reader) {
    return ContinueOperand(reader, ParsePrimary(reader));
}

LiteralKind LiteralKindOf(TokenKind kind) {
    switch (kind) {
        case TokenKind::Integer:
            return LiteralKind::Integer;
        case TokenKind::Decimal:
            return LiteralKind::Decimal;
        case TokenKind::Float:
            return LiteralKind::Float;
        case TokenKind::Money:
            return LiteralKind::Money;
        case TokenKind::String:
            return LiteralKind::String;
        case TokenKind::NationalString:
            return LiteralKind::NationalString;
        case TokenKind::Binary:
            return LiteralKind::Binary;
        default:
            return LiteralKind::Null;
    }
}

}  // namespace

ExpressionPtr TryLiteral(TokenReader& reader) {
    const int line = reader.Line();
    const LiteralKind kind = LiteralKindOf(reader.Peek().kind);
    if (kind == LiteralKind::Null && !reader.AtWord(u"null")) return nullptr;
    const Token token = reader.Take();
    auto node = std::make_unique<Literal>(kind, kind == LiteralKind::Null ? QString() : token.text);
    node->line = line;
    return node;
}

ExpressionPtr ContinueExpression(TokenReader& reader, ExpressionPtr left) {
    left = ContinueOperand(reader, std::move(left));
    return ContinueSum(reader, ContinueProduct(reader, std::move(left)));
}

ExpressionPtr ParseExpression(TokenReader& reader) {
    return ContinueExpression(reader, ParseSigned(reader));
}

ExpressionList ParseList(TokenReader& reader) {
    ExpressionList list;
    do {
        list.push_back(ParseExpression(reader));
    } while (reader.TrySign(u","));
    return list;
}

ExpressionPtr ParseValueOrDefault(TokenReader& reader) {
    if (!reader.AtWord(u"default")) return ParseExpression(reader);
    auto node = std::make_unique<Literal>(LiteralKind::Default, QString());
    node->line = reader.Line();
    reader.Take();
    return node;
}

ExpressionPtr ParseConstant(TokenReader& reader) {
    const int line = reader.Line();
    const bool minus = reader.AtSign(u"-");
    if (minus || reader.AtSign(u"+")) reader.Take();
    ExpressionPtr literal = TryLiteral(reader);
    if (!literal) reader.Fail();
    if (!minus) return literal;
    auto node = Make<Negate>(line);
    node->operand = std::move(literal);
    node->height = 2;
    return node;
}

}  // namespace quarv::localdb::tsql
