#include "localdb/engine/QueryBinder.h"

#include <algorithm>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/VariableTable.h"

namespace quarv::localdb::engine {

std::unique_ptr<BoundQuery> QueryBinder::Bind(const tsql::Query& query) {
    result_ = std::make_unique<BoundQuery>();
    result_->distinct = query.distinct;
    BindFrom(query);
    if (query.where) {
        ExpressionBinder binder(context_, scope_);
        result_->where = binder.Condition(*query.where);
    }
    BindGrouping(query);
    BindItems(query);
    BindOrder(query);
    BindLimits(query);
    return std::move(result_);
}

std::unique_ptr<BoundQuery> QueryBinder::BindSub(const tsql::Query& query) {
    if (query.into) throw SqlError(156, {QStringLiteral("into")}, query.into->line);
    if (!query.orderBy.empty() && !query.top && !query.offset) throw SqlError(1033, {}, query.line);
    std::unique_ptr<BoundQuery> bound = Bind(query);
    if (!bound->assigned.empty()) throw SqlError(102, {QStringLiteral("=")}, query.line);
    return bound;
}

std::unique_ptr<BoundQuery> QueryBinder::BindScalar(const tsql::Query& query) {
    std::unique_ptr<BoundQuery> bound = BindSub(query);
    if (bound->items.size() != 1) throw SqlError(116, {}, query.line);
    return bound;
}

void QueryBinder::BindItems(const tsql::Query& query) {
    for (const tsql::SelectItem& item : query.items) {
        if (!item.expression) {
            AddStar(item);
        } else if (!item.variable.isEmpty()) {
            AddAssignment(item);
        } else {
            AddItem(item);
        }
    }
    if (!result_->assigned.empty() && result_->assigned.size() != result_->items.size()) {
        throw SqlError(141, {}, query.line);
    }
    for (const BoundPtr& item : result_->items) {
        if (result_->grouped) CheckGrouped(*item, 8120);
    }
}

void QueryBinder::AddStar(const tsql::SelectItem& item) {
    if (scope_.IsEmpty()) throw SqlError(263, {}, item.line);
    if (!item.qualifier.name.isEmpty()) {
        for (const SourceColumn& column : scope_.Find(item.qualifier).columns) AddColumn(column);
        return;
    }
    for (const Source& source : scope_.Sources()) {
        for (const SourceColumn& column : source.columns) AddColumn(column);
    }
}

void QueryBinder::AddColumn(const SourceColumn& column) {
    auto node = column.Bind();
    result_->columns.push_back({column.name, column.type, column.nullable, column.identity, false});
    result_->items.push_back(std::move(node));
}

void QueryBinder::AddItem(const tsql::SelectItem& item) {
    ExpressionBinder binder(context_, scope_);
    binder.AllowAggregates(true);
    BoundPtr value = binder.Value(*item.expression);
    Column column;
    column.name = item.alias;
    column.type = value->type;
    column.nullable = value->nullable;
    column.computed = !value->IsColumn();
    if (value->IsColumn()) {
        const auto& source = static_cast<const BoundColumn&>(*value);
        column.identity = source.identity;
        if (item.alias.isEmpty()) column.name = source.Name();
    }
    result_->columns.push_back(column);
    result_->items.push_back(std::move(value));
}

void QueryBinder::AddAssignment(const tsql::SelectItem& item) {
    const std::optional<size_t> variable = context_.Variables().Find(item.variable);
    if (!variable) throw SqlError(137, {item.variable}, item.line);
    ExpressionBinder binder(context_, scope_);
    binder.AllowAggregates(true);
    BoundPtr value = ExpressionBinder::Convert(binder.Value(*item.expression),
                                               context_.Variables().At(*variable).type);
    result_->assigned.push_back(*variable);
    result_->columns.push_back({QString(), value->type, true, false, true});
    result_->items.push_back(std::move(value));
}

namespace {

bool HasAggregate(const tsql::Expression& expression, ExpressionBinder binder) {
    binder.AllowAggregates(true);
    binder.Value(expression);
    return binder.SawAggregate();
}

}  // namespace

void QueryBinder::BindGrouping(const tsql::Query& query) {
    ExpressionBinder binder(context_, scope_);
    for (const tsql::ExpressionPtr& group : query.groupBy) {
        result_->groupBy.push_back(binder.Value(*group));
        if (IsFixed(*result_->groupBy.back())) throw SqlError(164, {}, group->line);
        TypeRules::CheckOrder(result_->groupBy.back()->type);
    }
    result_->grouped = !query.groupBy.empty() || query.having;
    for (const tsql::SelectItem& item : query.items) {
        if (result_->grouped) break;
        result_->grouped = item.expression && HasAggregate(*item.expression, binder);
    }
    if (!query.having) return;
    binder.AllowAggregates(true);
    result_->having = binder.Condition(*query.having);
    CheckGrouped(*result_->having, 8121);
}

void QueryBinder::CheckGrouped(const BoundExpression& expression, int number) const {
    const auto same = [&expression](const BoundPtr& group) {
        return SameExpression(*group, expression);
    };
    if (std::any_of(result_->groupBy.begin(), result_->groupBy.end(), same)) return;
    if (expression.IsAggregate()) return;
    if (expression.IsColumn()) {
        // A column of an outer query is the same in the whole group.
        const auto& column = static_cast<const BoundColumn&>(expression);
        for (const Source& source : scope_.Sources()) {
            for (const SourceColumn& own : source.columns) {
                if (own.sql != column.Detail()) continue;
                throw SqlError(number, {source.name + u'.' + own.name});
            }
        }
    }
    for (const BoundPtr& part : expression.parts) CheckGrouped(*part, number);
}

BoundOrder QueryBinder::BindOrderItem(const tsql::OrderItem& item) {
    BoundOrder order;
    order.descending = item.descending;
    const tsql::Expression& expression = *item.expression;
    if (expression.kind == tsql::ExpressionKind::Literal) {
        const auto& literal = static_cast<const tsql::Literal&>(expression);
        const qulonglong ordinal = literal.text.toULongLong();
        if (literal.literal != tsql::LiteralKind::Integer) throw SqlError(408, {literal.text});
        if (ordinal < 1 || ordinal > result_->items.size()) throw SqlError(108, {literal.text});
        order.ordinal = ordinal;
        return order;
    }
    if (expression.kind == tsql::ExpressionKind::Column) {
        // An alias of the select list comes before a column of the sources.
        const auto& name = static_cast<const tsql::ColumnName&>(expression).name;
        for (size_t i = 0; i < result_->columns.size() && name.schema.isEmpty(); ++i) {
            if (!SameName(result_->columns[i].name, name.name)) continue;
            order.ordinal = i + 1;
            return order;
        }
    }
    ExpressionBinder binder(context_, scope_);
    binder.AllowAggregates(true);
    order.expression = binder.Value(expression);
    for (size_t i = 0; i < result_->items.size(); ++i) {
        if (!SameExpression(*result_->items[i], *order.expression)) continue;
        order.expression.reset();
        order.ordinal = i + 1;
        return order;
    }
    if (result_->distinct) throw SqlError(145);
    if (result_->grouped) CheckGrouped(*order.expression, 8127);
    return order;
}

void QueryBinder::BindOrder(const tsql::Query& query) {
    for (const tsql::OrderItem& item : query.orderBy) {
        try {
            result_->orderBy.push_back(BindOrderItem(item));
            const BoundOrder& order = result_->orderBy.back();
            const bool expression = order.expression != nullptr;
            TypeRules::CheckOrder(expression ? order.expression->type
                                             : result_->items[order.ordinal - 1]->type);
        } catch (SqlError& error) {
            if (error.What().line == 0) error.SetLine(item.expression->line);
            throw;
        }
    }
}

void QueryBinder::BindLimits(const tsql::Query& query) {
    const Scope none;
    ExpressionBinder binder(context_, none);
    const auto bind = [&binder](const tsql::ExpressionPtr& expression, int64_t least, int number) {
        if (!expression) return BoundPtr();
        BoundPtr value = binder.Value(*expression);
        if (ClassOf(value->type) != TypeClass::Integer) throw SqlError(1060, {}, expression->line);
        value = ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::BigInt));
        return BoundPtr(std::make_unique<BoundRowCount>(std::move(value), least, number));
    };
    result_->top = bind(query.top, 0, 127);
    result_->offset = bind(query.offset, 0, 10742);
    result_->fetch = bind(query.fetch, 1, 10744);
    if (result_->top && result_->offset) throw SqlError(10741, {}, query.line);
}

}  // namespace quarv::localdb::engine
