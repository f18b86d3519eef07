// The conditions of ExpressionBinder: what is true, false or unknown.
#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SubqueryNodes.h"
#include "localdb/engine/TypeRules.h"

namespace quarv::localdb::engine {

namespace {

// As messages call it.
const char16_t* SignName(tsql::ComparisonSign sign) {
    static constexpr const char16_t* Names[] = {u"equal to",     u"not equal to",
                                                u"less than",    u"less than or equal to",
                                                u"greater than", u"greater than or equal to"};
    return Names[static_cast<size_t>(sign)];
}

BoundPtr Negated(BoundPtr condition, bool negated) {
    if (!negated) return condition;
    auto node = std::make_unique<BoundNot>();
    node->parts.push_back(std::move(condition));
    return node;
}

}  // namespace

BoundPtr ExpressionBinder::Condition(const tsql::Expression& expression) {
    try {
        switch (expression.kind) {
            case tsql::ExpressionKind::Comparison:
                return BindComparison(static_cast<const tsql::Comparison&>(expression));
            case tsql::ExpressionKind::Junction:
                return BindJunction(static_cast<const tsql::Junction&>(expression));
            case tsql::ExpressionKind::Not:
                return Negated(Condition(*static_cast<const tsql::Not&>(expression).operand), true);
            case tsql::ExpressionKind::IsNull:
                return BindIsNull(static_cast<const tsql::IsNull&>(expression));
            case tsql::ExpressionKind::Like:
                return BindLike(static_cast<const tsql::Like&>(expression));
            case tsql::ExpressionKind::In:
                return BindIn(static_cast<const tsql::In&>(expression));
            case tsql::ExpressionKind::Between:
                return BindBetween(static_cast<const tsql::Between&>(expression));
            case tsql::ExpressionKind::Exists:
                return BindExists(static_cast<const tsql::Exists&>(expression));
            case tsql::ExpressionKind::Quantified:
                return BindQuantified(static_cast<const tsql::Quantified&>(expression));
            default:
                throw SqlError(4145, {QString()});
        }
    } catch (SqlError& error) {
        if (error.What().line == 0) error.SetLine(expression.line);
        throw;
    }
}

BoundPtr ExpressionBinder::Compare(tsql::ComparisonSign sign, BoundPtr left, BoundPtr right) {
    TypeRules::CheckComparison(SignName(sign), left->type, right->type);
    Unify(left, right);
    auto node = std::make_unique<BoundComparison>(sign);
    node->nullable = left->nullable || right->nullable;
    node->parts.push_back(std::move(left));
    node->parts.push_back(std::move(right));
    CheckCollation(node->Collates(), SignName(sign), true);
    return node;
}

BoundPtr ExpressionBinder::BindComparison(const tsql::Comparison& comparison) {
    BoundPtr left = Value(*comparison.left);
    return Compare(comparison.sign, std::move(left), Value(*comparison.right));
}

BoundPtr ExpressionBinder::BindJunction(const tsql::Junction& junction) {
    auto node = std::make_unique<BoundJunction>(junction.isAnd);
    for (const tsql::ExpressionPtr& term : junction.terms) {
        node->parts.push_back(Condition(*term));
    }
    return node;
}

BoundPtr ExpressionBinder::BindIsNull(const tsql::IsNull& test) {
    auto node = std::make_unique<BoundIsNull>(test.negated);
    node->parts.push_back(Value(*test.operand));
    return node;
}

BoundPtr ExpressionBinder::BindLike(const tsql::Like& like) {
    auto node = std::make_unique<BoundLike>();
    const SqlType text = MakeType(TypeKind::NVarChar, SqlType::Max);
    for (const tsql::ExpressionPtr* part : {&like.operand, &like.pattern, &like.escape}) {
        if (!*part) continue;
        BoundPtr value = Value(**part);
        if (ClassOf(value->type) != TypeClass::Text) value = Convert(std::move(value), text);
        node->parts.push_back(std::move(value));
    }
    CheckCollation(node->Collates(), u"like", true);
    return Negated(std::move(node), like.negated);
}

BoundPtr ExpressionBinder::BindIn(const tsql::In& in) {
    BoundPtr operand = Value(*in.operand);
    if (in.query) {
        QueryBinder binder(context_, &scope_);
        return Negated(
            std::make_unique<BoundInQuery>(std::move(operand), binder.BindScalar(*in.query)),
            in.negated);
    }
    // All values are brought to one type with the operand.
    std::vector<BoundPtr> values;
    SqlType type = operand->type;
    for (const tsql::ExpressionPtr& value : in.values) {
        values.push_back(Value(*value));
        BoundPtr& added = values.back();
        if (!added->untypedNull)
            TypeRules::CheckComparison(u"equal to", operand->type, added->type);
        TakeExactly(added, type);
        if (!added->untypedNull &&
            !(ClassOf(type) == TypeClass::Text && ClassOf(added->type) == TypeClass::Text)) {
            type = TypeRules::Common(type, added->type);
        }
    }
    auto node = std::make_unique<BoundIn>();
    const bool text = ClassOf(type) == TypeClass::Text;
    const auto add = [&node, &type, text](BoundPtr value) {
        const bool same = text && ClassOf(value->type) == TypeClass::Text && !value->untypedNull;
        node->parts.push_back(same ? std::move(value) : Convert(std::move(value), type));
    };
    add(std::move(operand));
    for (BoundPtr& value : values) add(std::move(value));
    CheckCollation(node->Collates(), u"equal to", true);
    return Negated(std::move(node), in.negated);
}

BoundPtr ExpressionBinder::BindBetween(const tsql::Between& between) {
    auto node = std::make_unique<BoundJunction>(true);
    node->parts.push_back(Compare(tsql::ComparisonSign::GreaterOrEqual, Value(*between.operand),
                                  Value(*between.low)));
    node->parts.push_back(
        Compare(tsql::ComparisonSign::LessOrEqual, Value(*between.operand), Value(*between.high)));
    return Negated(std::move(node), between.negated);
}

BoundPtr ExpressionBinder::BindExists(const tsql::Exists& exists) {
    QueryBinder binder(context_, &scope_);
    return std::make_unique<BoundExists>(binder.BindSub(*exists.query));
}

BoundPtr ExpressionBinder::BindQuantified(const tsql::Quantified& quantified) {
    constexpr tsql::ComparisonSign Opposite[] = {
        tsql::ComparisonSign::NotEqual,       tsql::ComparisonSign::Equal,
        tsql::ComparisonSign::GreaterOrEqual, tsql::ComparisonSign::Greater,
        tsql::ComparisonSign::LessOrEqual,    tsql::ComparisonSign::Less};
    QueryBinder binder(context_, &scope_);
    std::unique_ptr<BoundQuery> query = binder.BindScalar(*quantified.query);
    const std::string alias = context_.NextAlias();
    auto column =
        std::make_unique<BoundColumn>(alias + ".c1", QString(), query->items.front()->type);
    const tsql::ComparisonSign sign =
        quantified.all ? Opposite[static_cast<size_t>(quantified.sign)] : quantified.sign;
    const Collating& collating = query->items.front()->Collates();
    auto item = std::make_unique<BoundCollate>(std::move(column), collating.id, collating.label);
    BoundPtr comparison = Compare(sign, Value(*quantified.operand), std::move(item));
    return std::make_unique<BoundQuantified>(std::move(comparison), std::move(query), alias,
                                             quantified.all);
}

}  // namespace quarv::localdb::engine
