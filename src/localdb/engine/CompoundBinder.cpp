// The queries of QueryBinder that stand around others: set operations, lists of values, and GROUP
// BY with several sets, which is a query a set with UNION ALL between them.
#include <algorithm>

#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/WindowFunction.h"

namespace quarv::localdb::engine {

namespace {

// The collation of a column of several queries or rows; of queries, it is that of the first.
CollationId CollationOf(const BoundSource& source, size_t column) {
    if (!source.arms.empty()) return source.arms.front()->items[column]->Collates().id;
    Collating folded;
    for (const std::vector<BoundPtr>& row : source.rows) folded.Meet(row[column]->Collates());
    CheckCollation(folded, u"VALUES", true);
    return folded.id;
}

// A query of all columns of `source`.
std::unique_ptr<BoundQuery> Around(std::unique_ptr<BoundSource> source,
                                   std::vector<Column> columns) {
    auto query = std::make_unique<BoundQuery>();
    source->width = columns.size();
    for (size_t i = 0; i < columns.size(); ++i) {
        auto item = std::make_unique<BoundColumn>(source->alias + ".c" + std::to_string(i + 1),
                                                  columns[i].name, columns[i].type);
        item->nullable = columns[i].nullable;
        if (ClassOf(columns[i].type) == TypeClass::Text) item->collation = CollationOf(*source, i);
        query->items.push_back(std::move(item));
    }
    query->columns = std::move(columns);
    query->from = std::move(source);
    return query;
}

// The one type of a column that several expressions make; of nulls alone it is int.
SqlType CommonType(const std::vector<BoundPtr*>& values) {
    SqlType type = IntType();
    bool typed = false;
    for (const BoundPtr* value : values) {
        if ((*value)->untypedNull) continue;
        type = typed ? TypeRules::Common(type, (*value)->type) : (*value)->type;
        typed = true;
    }
    for (BoundPtr* value : values) *value = ExpressionBinder::Convert(std::move(*value), type);
    return type;
}

bool CombinedNullable(tsql::SetOperator sign, bool left, bool right) {
    switch (sign) {
        case tsql::SetOperator::Except:
            return left;
        case tsql::SetOperator::Intersect:
            return left && right;
        default:
            return left || right;
    }
}

// Brings a column's texts to the collation that wins. Raises SqlError 451 or 468.
void UnifyCollations(const std::vector<BoundPtr*>& values, tsql::SetOperator sign, size_t column) {
    constexpr const char16_t* Words[] = {u"UNION", u"UNION ALL", u"EXCEPT", u"INTERSECT"};
    Collating folded;
    for (const BoundPtr* value : values) folded.Meet((*value)->Collates());
    const QString word = QString::fromUtf16(Words[static_cast<size_t>(sign)]);
    if (folded.IsUnresolved() && sign == tsql::SetOperator::UnionAll) {
        throw SqlError(451, {NameOf(folded.id), NameOf(folded.other), word,
                             QStringLiteral("SELECT"), QString::number(column)});
    }
    CheckCollation(folded, word, true);
    for (BoundPtr* value : values) {
        if ((*value)->Collates().id == folded.id) continue;
        *value = std::make_unique<BoundCollate>(std::move(*value), folded.id, folded.label);
    }
}

// The columns of a set operation: names of the first query, types of all.
std::vector<Column> Combine(BoundSource& source) {
    std::vector<Column> columns = source.arms.front()->columns;
    for (size_t i = 0; i < columns.size(); ++i) {
        std::vector<BoundPtr*> values;
        bool nullable = source.arms.front()->columns[i].nullable;
        for (size_t arm = 0; arm < source.arms.size(); ++arm) {
            BoundQuery& query = *source.arms[arm];
            values.push_back(&query.items[i]);
            if (arm > 0) {
                nullable = CombinedNullable(source.operators[arm - 1], nullable,
                                            query.columns[i].nullable);
            }
        }
        columns[i].type = CommonType(values);
        const bool compares =
            std::any_of(source.operators.begin(), source.operators.end(),
                        [](tsql::SetOperator sign) { return sign != tsql::SetOperator::UnionAll; });
        if (compares) TypeRules::CheckComparable(columns[i].type, 5335);
        if (ClassOf(columns[i].type) == TypeClass::Text) {
            UnifyCollations(values, source.operators.front(), i + 1);
        }
        columns[i].nullable = nullable;
        columns[i].identity = false;
        columns[i].computed = true;
    }
    return columns;
}

}  // namespace

std::unique_ptr<BoundQuery> QueryBinder::BindArms(const tsql::Query& query, size_t count) {
    auto source = std::make_unique<BoundSource>();
    source->operators.assign(query.operators.begin(),
                             query.operators.begin() + static_cast<ptrdiff_t>(count - 1));
    for (size_t i = 0; i < count; ++i) {
        const tsql::Query& arm = *query.arms[i];
        if (arm.into) throw SqlError(196, {}, arm.line);
        QueryBinder binder(context_, outer_);
        source->arms.push_back(binder.Bind(arm));
        if (!source->arms.back()->assigned.empty()) throw SqlError(141, {}, arm.line);
        if (source->arms.back()->items.size() != source->arms.front()->items.size()) {
            throw SqlError(205, {}, query.line);
        }
    }
    source->alias = context_.NextAlias();
    std::vector<Column> columns = Combine(*source);
    return Around(std::move(source), std::move(columns));
}

std::unique_ptr<BoundQuery> QueryBinder::BindCompound(const tsql::Query& query) {
    result_ = BindArms(query, query.arms.size());
    for (const tsql::OrderItem& item : query.orderBy) {
        result_->orderBy.push_back(CompoundOrder(item));
    }
    BindLimits(query);
    return std::move(result_);
}

BoundOrder QueryBinder::CompoundOrder(const tsql::OrderItem& item) const {
    if (std::optional<BoundOrder> ordinal = FindOrdinal(item)) return std::move(*ordinal);
    if (std::optional<BoundOrder> alias = FindAlias(item)) return std::move(*alias);
    const int line = item.expression->line;
    if (item.expression->kind == tsql::ExpressionKind::Column) {
        const auto& name = static_cast<const tsql::ColumnName&>(*item.expression).name;
        if (name.schema.isEmpty()) throw SqlError(207, {name.name}, line);
    }
    throw SqlError(104, {}, line);
}

// What the rows of all sets are ordered by and is no item becomes an item behind the others.
void QueryBinder::AddHiddenOrder(const tsql::Query& query) {
    for (const tsql::OrderItem& item : query.orderBy) {
        if (FindOrdinal(item) || FindAlias(item)) continue;
        if (query.distinct) throw SqlError(145, {}, item.expression->line);
        BoundPtr value = ItemBinder(false).Value(*item.expression);
        CheckGrouped(*value, 8127);
        result_->columns.push_back({QString(), value->type, value->nullable, false, true});
        result_->items.push_back(std::move(value));
    }
    for (const BoundPtr& item : result_->items) {
        if (HasWindow(*item)) {
            throw SqlError(40517, {QStringLiteral("OVER with GROUPING SETS")}, query.line);
        }
    }
}

std::unique_ptr<BoundQuery> QueryBinder::BindGroupingSets(const tsql::Query& query) {
    auto source = std::make_unique<BoundSource>();
    for (const std::vector<size_t>& set : query.groupingSets) {
        QueryBinder binder(context_, outer_);
        binder.set_ = &set;
        source->arms.push_back(binder.BindSimple(query));
        if (!source->arms.back()->assigned.empty()) {
            throw SqlError(40517, {QStringLiteral("GROUPING SETS with an assignment")}, query.line);
        }
    }
    source->operators.assign(source->arms.size() - 1, tsql::SetOperator::UnionAll);
    source->alias = context_.NextAlias();
    std::vector<Column> columns = Combine(*source);
    result_ = Around(std::move(source), std::move(columns));
    result_->distinct = query.distinct;
    OrderSets(query);
    BindLimits(query);
    return std::move(result_);
}

// The hidden items leave the select list and order the rows.
void QueryBinder::OrderSets(const tsql::Query& query) {
    std::vector<BoundPtr> all = std::move(result_->items);
    size_t hidden = all.size();
    for (const tsql::OrderItem& item : query.orderBy) {
        const bool literal = item.expression->kind == tsql::ExpressionKind::Literal;
        if (!literal && !FindAlias(item)) --hidden;
    }
    result_->items.clear();
    for (size_t i = 0; i < hidden; ++i) result_->items.push_back(std::move(all[i]));
    result_->columns.resize(hidden);
    for (const tsql::OrderItem& item : query.orderBy) {
        if (std::optional<BoundOrder> ordinal = FindOrdinal(item)) {
            result_->orderBy.push_back(std::move(*ordinal));
        } else if (std::optional<BoundOrder> alias = FindAlias(item)) {
            result_->orderBy.push_back(std::move(*alias));
        } else {
            result_->orderBy.push_back({std::move(all[hidden++]), 0, item.descending});
        }
    }
}

std::unique_ptr<BoundQuery> QueryBinder::BindRowsOfValues(const tsql::DerivedTable& table,
                                                          const Scope* around) {
    auto source = std::make_unique<BoundSource>();
    const Scope names(around);
    ExpressionBinder binder(context_, names);
    for (const tsql::ExpressionList& row : table.rows) {
        source->rows.emplace_back();
        for (const tsql::ExpressionPtr& value : row) {
            source->rows.back().push_back(binder.Value(*value));
        }
        if (row.size() != table.rows.front().size()) throw SqlError(10709, {}, table.line);
    }
    std::vector<Column> columns(table.rows.front().size());
    for (size_t i = 0; i < columns.size(); ++i) {
        std::vector<BoundPtr*> values;
        columns[i].nullable = false;
        for (std::vector<BoundPtr>& row : source->rows) {
            values.push_back(&row[i]);
            columns[i].nullable = columns[i].nullable || row[i]->nullable;
        }
        columns[i].type = CommonType(values);
    }
    source->alias = context_.NextAlias();
    return Around(std::move(source), std::move(columns));
}

}  // namespace quarv::localdb::engine
