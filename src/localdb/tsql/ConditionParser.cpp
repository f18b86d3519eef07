#include <algorithm>
#include <array>
#include <optional>

#include "localdb/tsql/ExpressionNode.h"
#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/Query.h"

namespace quarv::localdb::tsql {

namespace {

std::optional<ComparisonSign> TryComparisonSign(TokenReader& reader) {
    struct Entry {
        QStringView text;
        ComparisonSign sign;
    };
    static constexpr std::array<Entry, 9> Table = {{{u"=", ComparisonSign::Equal},
                                                    {u"<>", ComparisonSign::NotEqual},
                                                    {u"!=", ComparisonSign::NotEqual},
                                                    {u"<", ComparisonSign::Less},
                                                    {u"<=", ComparisonSign::LessOrEqual},
                                                    {u"!>", ComparisonSign::LessOrEqual},
                                                    {u">", ComparisonSign::Greater},
                                                    {u">=", ComparisonSign::GreaterOrEqual},
                                                    {u"!<", ComparisonSign::GreaterOrEqual}}};
    for (const Entry& entry : Table) {
        if (reader.TrySign(entry.text)) return entry.sign;
    }
    return std::nullopt;
}

ExpressionPtr FinishIn(TokenReader& reader, ExpressionPtr operand, bool negated) {
    auto node = Make<In>(operand->line);
    node->negated = negated;
    node->operand = std::move(operand);
    reader.ExpectSign(u"(");
    TokenReader::Nesting nesting(reader);
    if (AtQuery(reader)) {
        node->query = ParseQuery(reader);
    } else {
        node->values = ParseList(reader);
    }
    reader.ExpectSign(u")");
    node->height = node->operand->height + 1;
    for (const ExpressionPtr& value : node->values) {
        node->height = std::max(node->height, value->height + 1);
    }
    return Finish(reader, std::move(node), {});
}

ExpressionPtr FinishBetween(TokenReader& reader, ExpressionPtr operand, bool negated) {
    auto node = Make<Between>(operand->line);
    node->negated = negated;
    node->operand = std::move(operand);
    node->low = ParseExpression(reader);
    reader.ExpectWord(u"and");
    node->high = ParseExpression(reader);
    const Expression *a = node->operand.get(), *b = node->low.get(), *c = node->high.get();
    return Finish(reader, std::move(node), {a, b, c});
}

ExpressionPtr FinishLike(TokenReader& reader, ExpressionPtr operand, bool negated) {
    auto node = Make<Like>(operand->line);
    node->negated = negated;
    node->operand = std::move(operand);
    node->pattern = ParseExpression(reader);
    if (reader.TryWord(u"escape")) node->escape = ParseExpression(reader);
    const Expression *a = node->operand.get(), *b = node->pattern.get();
    return Finish(reader, std::move(node), {a, b});
}

ExpressionPtr FinishIsNull(TokenReader& reader, ExpressionPtr operand) {
    auto node = Make<IsNull>(operand->line);
    node->negated = reader.TryWord(u"not");
    reader.ExpectWord(u"null");
    node->operand = std::move(operand);
    const Expression* part = node->operand.get();
    return Finish(reader, std::move(node), {part});
}

// A value stands where a condition is needed.
[[noreturn]] void FailCondition(TokenReader& reader) {
    const Token& at = reader.Peek();
    if (at.kind == TokenKind::Sign && !at.IsSign(u")") && !at.IsSign(u";")) reader.Fail();
    throw SyntaxError(SyntaxError::NotACondition, {reader.Near().text}, at.line, at.column);
}

bool TryQuantifier(TokenReader& reader, bool& all) {
    for (const QStringView word : {u"all", u"any", u"some"}) {
        if (!reader.AtSign(u"(", 1) || !reader.TryWord(word)) continue;
        all = word == u"all";
        return true;
    }
    return false;
}

ExpressionPtr FinishQuantified(TokenReader& reader, ExpressionPtr operand, ComparisonSign sign,
                               bool all) {
    auto node = Make<Quantified>(operand->line);
    node->all = all;
    node->sign = sign;
    node->operand = std::move(operand);
    reader.ExpectSign(u"(");
    TokenReader::Nesting nesting(reader);
    node->query = ParseQuery(reader);
    reader.ExpectSign(u")");
    const Expression* part = node->operand.get();
    return Finish(reader, std::move(node), {part});
}

ExpressionPtr FinishComparison(TokenReader& reader, ExpressionPtr operand) {
    const std::optional<ComparisonSign> sign = TryComparisonSign(reader);
    if (!sign) FailCondition(reader);
    bool all = false;
    if (TryQuantifier(reader, all)) {
        return FinishQuantified(reader, std::move(operand), *sign, all);
    }
    auto node = Make<Comparison>(operand->line);
    node->sign = *sign;
    node->left = std::move(operand);
    node->right = ParseExpression(reader);
    const Expression *a = node->left.get(), *b = node->right.get();
    return Finish(reader, std::move(node), {a, b});
}

// What follows the value at the head of a condition.
ExpressionPtr FinishPredicate(TokenReader& reader, ExpressionPtr operand) {
    if (reader.TryWord(u"is")) return FinishIsNull(reader, std::move(operand));
    const bool negated = reader.TryWord(u"not");
    if (reader.TryWord(u"like")) return FinishLike(reader, std::move(operand), negated);
    if (reader.TryWord(u"in")) return FinishIn(reader, std::move(operand), negated);
    if (reader.TryWord(u"between")) return FinishBetween(reader, std::move(operand), negated);
    if (negated) reader.Fail();
    return FinishComparison(reader, std::move(operand));
}

ExpressionPtr ParseExists(TokenReader& reader) {
    auto node = Make<Exists>(reader.Line());
    reader.Take();
    reader.ExpectSign(u"(");
    TokenReader::Nesting nesting(reader);
    node->query = ParseQuery(reader);
    reader.ExpectSign(u")");
    return node;
}

bool IsCondition(const Expression& node) {
    return node.kind >= ExpressionKind::Comparison;
}

ExpressionPtr ParseJunctions(TokenReader& reader, bool inParenthesis);

// A condition without AND and OR around it. Only what follows a value tells whether a parenthesis
// holds a condition or a value, so `inParenthesis` lets a bare value pass in front of ")".
ExpressionPtr ParseTerm(TokenReader& reader, bool inParenthesis) {
    if (reader.AtWord(u"not")) {
        auto node = Make<Not>(reader.Line());
        reader.Take();
        TokenReader::Nesting nesting(reader);
        node->operand = ParseTerm(reader, false);
        const Expression* operand = node->operand.get();
        return Finish(reader, std::move(node), {operand});
    }
    if (reader.AtWord(u"exists")) return ParseExists(reader);
    ExpressionPtr operand;
    if (reader.AtSign(u"(") && !reader.AtWord(u"select", 1)) {
        reader.Take();
        TokenReader::Nesting nesting(reader);
        ExpressionPtr inner = ParseJunctions(reader, true);
        reader.ExpectSign(u")");
        if (IsCondition(*inner)) return inner;
        operand = ContinueExpression(reader, std::move(inner));
    } else {
        operand = ParseExpression(reader);
    }
    if (inParenthesis && reader.AtSign(u")")) return operand;
    return FinishPredicate(reader, std::move(operand));
}

// Reads terms joined by `word`; a single term stays as it is.
template <class Next>
ExpressionPtr ParseJunction(TokenReader& reader, bool isAnd, Next next) {
    const QStringView word = isAnd ? u"and" : u"or";
    ExpressionPtr first = next(reader);
    if (!reader.AtWord(word)) return first;
    if (!IsCondition(*first)) reader.Fail();
    auto node = Make<Junction>(first->line);
    node->isAnd = isAnd;
    node->height = first->height + 1;
    node->terms.push_back(std::move(first));
    while (reader.TryWord(word)) {
        node->terms.push_back(next(reader));
        node->height = std::max(node->height, node->terms.back()->height + 1);
    }
    return Finish(reader, std::move(node), {});
}

ExpressionPtr ParseJunctions(TokenReader& reader, bool inParenthesis) {
    return ParseJunction(reader, false, [inParenthesis](TokenReader& outer) {
        return ParseJunction(outer, true, [inParenthesis](TokenReader& inner) {
            return ParseTerm(inner, inParenthesis);
        });
    });
}

}  // namespace

ExpressionPtr ParseCondition(TokenReader& reader) {
    return ParseJunctions(reader, false);
}

}  // namespace quarv::localdb::tsql
