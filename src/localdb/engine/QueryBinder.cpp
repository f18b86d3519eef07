#include "localdb/engine/QueryBinder.h"

#include <algorithm>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/VariableTable.h"

namespace quarv::localdb::engine {

std::unique_ptr<BoundQuery> QueryBinder::Bind(const tsql::Query& query) {
    if (query.maxRecursion != tsql::Query::DefaultRecursion) {
        context_.maxRecursion = query.maxRecursion;
    }
    const BindContext::CommonsAround commons(context_);
    std::vector<BoundCommon> with = BindCommons(query.with);
    std::unique_ptr<BoundQuery> bound;
    if (!query.arms.empty()) {
        bound = BindCompound(query);
    } else if (!query.groupingSets.empty()) {
        bound = BindGroupingSets(query);
    } else {
        bound = BindSimple(query);
    }
    bound->with = std::move(with);
    return bound;
}

std::unique_ptr<BoundQuery> QueryBinder::BindSimple(const tsql::Query& query) {
    result_ = std::make_unique<BoundQuery>();
    result_->distinct = query.distinct;
    BindFrom(query);
    if (query.where) {
        ExpressionBinder binder(context_, scope_);
        result_->where = binder.Condition(*query.where);
    }
    BindGrouping(query);
    BindItems(query);
    if (set_) {
        AddHiddenOrder(query);
        return std::move(result_);
    }
    BindOrder(query);
    BindLimits(query);
    return std::move(result_);
}

ExpressionBinder QueryBinder::ItemBinder(bool windows) const {
    ExpressionBinder binder(context_, scope_);
    binder.AllowAggregates(true);
    binder.AllowWindows(windows);
    binder.SetGrouping(&grouping_);
    return binder;
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
        if (result_->distinct) TypeRules::CheckComparable(item->type, 421);
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

namespace {

// Raises SqlError 451 where a text's own columns leave its collation open.
void CheckResolved(const BoundExpression& value, const tsql::Expression& tree, size_t column) {
    if (ClassOf(value.type) != TypeClass::Text || !value.Collates().IsUnresolved()) return;
    QString operation = QStringLiteral("add");
    if (tree.kind == tsql::ExpressionKind::Case) operation = QStringLiteral("CASE");
    if (tree.kind == tsql::ExpressionKind::Function) {
        operation = static_cast<const tsql::Function&>(tree).name.toLower();
    }
    const Collating& collating = value.Collates();
    throw SqlError(451, {NameOf(collating.id), NameOf(collating.other), operation,
                         QStringLiteral("SELECT"), QString::number(column)});
}

}  // namespace

void QueryBinder::AddItem(const tsql::SelectItem& item) {
    BoundPtr value = ItemBinder(true).Value(*item.expression);
    CheckResolved(*value, *item.expression, result_->items.size() + 1);
    Column column;
    column.name = item.alias;
    column.type = value->type;
    column.nullable = value->nullable;
    column.computed = !value->IsColumn();
    if (value->IsColumn()) {
        const auto& source = static_cast<const BoundColumn&>(*value);
        column.identity = source.identity;
        if (item.alias.isEmpty()) column.name = source.Name();
    } else if (item.alias.isEmpty() && item.expression->kind == tsql::ExpressionKind::Column) {
        // A group that is absent from its set keeps its name.
        column.name = static_cast<const tsql::ColumnName&>(*item.expression).name.name;
    }
    result_->columns.push_back(column);
    result_->items.push_back(std::move(value));
}

void QueryBinder::AddAssignment(const tsql::SelectItem& item) {
    const std::optional<size_t> variable = context_.Variables().Find(item.variable);
    if (!variable) throw SqlError(137, {item.variable}, item.line);
    BoundPtr value = ExpressionBinder::Convert(ItemBinder(true).Value(*item.expression),
                                               context_.Variables().At(*variable).type);
    result_->assigned.push_back(*variable);
    result_->columns.push_back({QString(), value->type, true, false, true});
    result_->items.push_back(std::move(value));
}

// The groups that ItemBinder recognises, and which of them count as null in this set.
void QueryBinder::BindSetGroups(const tsql::Query& query) {
    ExpressionBinder binder(context_, scope_);
    std::vector<BoundPtr>& groups = grouping_.groups;
    for (const tsql::ExpressionPtr& group : query.groupBy) {
        groups.push_back(binder.Value(*group));
        if (IsFixed(*groups.back())) throw SqlError(164, {}, group->line);
        TypeRules::CheckOrder(groups.back()->type);
    }
    grouping_.absent.assign(groups.size(), false);
    for (size_t i = 0; set_ && i < groups.size(); ++i) {
        grouping_.absent[i] = std::none_of(set_->begin(), set_->end(), [&groups, i](size_t member) {
            return SameExpression(*groups[member], *groups[i]);
        });
    }
    for (size_t i = 0; i < groups.size(); ++i) {
        if (!grouping_.absent[i]) result_->groupBy.push_back(binder.Value(*query.groupBy[i]));
    }
}

void QueryBinder::BindGrouping(const tsql::Query& query) {
    BindSetGroups(query);
    result_->grouped = set_ || !query.groupBy.empty() || query.having;
    for (const tsql::SelectItem& item : query.items) {
        if (result_->grouped) break;
        if (!item.expression) continue;
        ExpressionBinder binder = ItemBinder(true);
        binder.Value(*item.expression);
        result_->grouped = binder.SawAggregate();
    }
    if (!query.having) return;
    result_->having = ItemBinder(false).Condition(*query.having);
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

std::optional<BoundOrder> QueryBinder::FindOrdinal(const tsql::OrderItem& item) const {
    if (item.expression->kind != tsql::ExpressionKind::Literal) return std::nullopt;
    const auto& literal = static_cast<const tsql::Literal&>(*item.expression);
    const qulonglong ordinal = literal.text.toULongLong();
    if (literal.literal != tsql::LiteralKind::Integer) throw SqlError(408, {literal.text});
    if (ordinal < 1 || ordinal > result_->items.size()) throw SqlError(108, {literal.text});
    return BoundOrder{nullptr, static_cast<size_t>(ordinal), item.descending};
}

// A name of the select list comes before a column of the sources.
std::optional<BoundOrder> QueryBinder::FindAlias(const tsql::OrderItem& item) const {
    if (item.expression->kind != tsql::ExpressionKind::Column) return std::nullopt;
    const auto& name = static_cast<const tsql::ColumnName&>(*item.expression).name;
    for (size_t i = 0; i < result_->columns.size() && name.schema.isEmpty(); ++i) {
        if (!SameName(result_->columns[i].name, name.name)) continue;
        return BoundOrder{nullptr, i + 1, item.descending};
    }
    return std::nullopt;
}

BoundOrder QueryBinder::BindOrderItem(const tsql::OrderItem& item) {
    const bool assigns = !result_->assigned.empty();
    if (std::optional<BoundOrder> ordinal = FindOrdinal(item)) return std::move(*ordinal);
    if (std::optional<BoundOrder> alias = FindAlias(item)) return std::move(*alias);
    BoundOrder order;
    order.descending = item.descending;
    order.expression = ItemBinder(true).Value(*item.expression);
    for (size_t i = 0; i < result_->items.size() && !assigns; ++i) {
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
    const auto bind = [&binder](const tsql::ExpressionPtr& expression, int64_t least, int number,
                                bool percent) {
        if (!expression) return BoundPtr();
        BoundPtr value = binder.Value(*expression);
        if (!percent && ClassOf(value->type) != TypeClass::Integer) {
            throw SqlError(1060, {}, expression->line);
        }
        const TypeKind kind = percent ? TypeKind::Float : TypeKind::BigInt;
        value = ExpressionBinder::Convert(std::move(value), MakeType(kind));
        return BoundPtr(std::make_unique<BoundRowCount>(std::move(value), least, number));
    };
    result_->topPercent = query.topPercent;
    result_->topTies = query.topTies;
    result_->top = bind(query.top, 0, query.topPercent ? 1031 : 127, query.topPercent);
    result_->offset = bind(query.offset, 0, 10742, false);
    result_->fetch = bind(query.fetch, 1, 10744, false);
    if (query.topTies && query.orderBy.empty()) throw SqlError(1062, {}, query.line);
    if (result_->top && result_->offset) throw SqlError(10741, {}, query.line);
}

}  // namespace quarv::localdb::engine
