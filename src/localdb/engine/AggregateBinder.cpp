// What ExpressionBinder does with aggregates, with functions over windows and with GROUPING.
#include "localdb/engine/Aggregate.h"
#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

BoundPtr ExpressionBinder::NullIfAbsent(BoundPtr value) const {
    for (size_t i = 0; i < grouping_->absent.size(); ++i) {
        if (!grouping_->absent[i] || !SameExpression(*grouping_->groups[i], *value)) continue;
        return std::make_unique<BoundConstant>(SqlValue(), value->type);
    }
    return value;
}

std::vector<BoundPtr> ExpressionBinder::BindArguments(const tsql::Function& function) {
    std::vector<BoundPtr> arguments;
    if (function.star) return arguments;
    const size_t count = AggregateArguments(function.name);
    if (function.arguments.size() != count) {
        throw SqlError(174, {function.name.toLower(), QString::number(count)});
    }
    for (const tsql::ExpressionPtr& argument : function.arguments) {
        arguments.push_back(Value(*argument));
    }
    return arguments;
}

BoundPtr ExpressionBinder::BindAggregate(const tsql::Function& function) {
    if (insideAggregate_) throw SqlError(130);
    if (!aggregatesAllowed_) throw SqlError(147);
    sawAggregate_ = true;
    insideAggregate_ = true;
    std::vector<BoundPtr> arguments = BindArguments(function);
    std::vector<BoundPtr> order;
    for (const tsql::OrderItem& item : function.within) order.push_back(Value(*item.expression));
    insideAggregate_ = false;
    if (!order.empty() && function.name.compare(u"string_agg", Qt::CaseInsensitive) != 0) {
        throw SqlError(10757, {function.name.toLower()});
    }
    std::unique_ptr<BoundAggregate> node =
        MakeAggregate(function.name, std::move(arguments), function.distinct);
    for (size_t i = 0; i < order.size(); ++i) {
        node->parts.push_back(std::move(order[i]));
        node->descending.push_back(function.within[i].descending);
    }
    return node;
}

// Inside of it stand values of the row, or, where the rows are groups, of the group.
BoundPtr ExpressionBinder::BindWindowed(const tsql::Function& function) {
    if (insideWindow_ || insideAggregate_) throw SqlError(4109);
    if (function.over && !windowsAllowed_) throw SqlError(4108);
    insideWindow_ = true;
    BoundPtr result;
    if (IsAggregateName(function.name)) {
        if (function.name.compare(u"string_agg", Qt::CaseInsensitive) == 0) {
            throw SqlError(4113, {function.name.toUpper()});
        }
        if (function.distinct) throw SqlError(10759);
        std::unique_ptr<BoundAggregate> node =
            MakeAggregate(function.name, BindArguments(function), false);
        node->over = BindOver(*function.over, *this, node->parts);
        result = std::move(node);
    } else {
        result = BindWindowFunction(function, *this);
    }
    insideWindow_ = false;
    return result;
}

// GROUPING(group) and GROUPING_ID(groups...): constants of the set of groups that is bound.
BoundPtr ExpressionBinder::BindGroupingCall(const tsql::Function& function) {
    const bool one = function.name.compare(u"grouping", Qt::CaseInsensitive) == 0;
    if (one && function.arguments.size() != 1) {
        throw SqlError(174, {QStringLiteral("grouping"), QStringLiteral("1")});
    }
    const GroupingState none;
    const GroupingState& state = grouping_ ? *grouping_ : none;
    int64_t bits = 0;
    for (size_t i = 0; i < function.arguments.size(); ++i) {
        const BoundPtr argument = BindNode(*function.arguments[i]);
        size_t group = 0;
        while (group < state.groups.size() && !SameExpression(*state.groups[group], *argument)) {
            ++group;
        }
        if (group == state.groups.size()) {
            throw SqlError(8161, {QString::number(i + 1), function.name.toUpper()});
        }
        bits = bits << 1 | (state.absent[group] ? 1 : 0);
    }
    return std::make_unique<BoundConstant>(SqlValue::Integer(bits),
                                           one ? MakeType(TypeKind::TinyInt) : IntType());
}

}  // namespace quarv::localdb::engine
