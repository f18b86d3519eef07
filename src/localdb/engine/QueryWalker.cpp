#include "localdb/engine/QueryWalker.h"

#include "localdb/tsql/Window.h"

namespace quarv::localdb::engine {

namespace {

template <typename Node>
const Node& As(const tsql::Expression& expression) {
    return static_cast<const Node&>(expression);
}

}  // namespace

void QueryWalker::Visit(const tsql::Query& query) {
    for (const tsql::CommonTable& table : query.with) Visit(*table.query);
    Enter(query);
    for (const auto& arm : query.arms) Visit(*arm);
    for (const tsql::SelectItem& item : query.items) {
        if (item.expression) {
            Visit(*item.expression);
        } else {
            OnStar(item);
        }
    }
    for (const tsql::TableSourcePtr& source : query.from) Visit(*source);
    VisitParts({&query.top, &query.where, &query.having});
    VisitAll(query.groupBy);
    VisitOrder(query.orderBy);
    Leave(query);
}

void QueryWalker::VisitAll(const tsql::ExpressionList& list) {
    for (const tsql::ExpressionPtr& item : list) Visit(*item);
}

void QueryWalker::VisitOrder(const std::vector<tsql::OrderItem>& items) {
    for (const tsql::OrderItem& item : items) Visit(*item.expression);
}

void QueryWalker::Visit(const tsql::TableSource& source) {
    switch (source.kind) {
        case tsql::TableSourceKind::Table:
            OnTable(static_cast<const tsql::NamedTable&>(source));
            return;
        case tsql::TableSourceKind::Derived: {
            const auto& derived = static_cast<const tsql::DerivedTable&>(source);
            if (derived.query) Visit(*derived.query);
            for (const tsql::ExpressionList& row : derived.rows) VisitAll(row);
            return;
        }
        case tsql::TableSourceKind::Join: {
            const auto& join = static_cast<const tsql::Join&>(source);
            Visit(*join.left);
            Visit(*join.right);
            VisitParts({&join.on});
            return;
        }
    }
}

void QueryWalker::VisitFunction(const tsql::Function& function) {
    VisitAll(function.arguments);
    VisitOrder(function.within);
    if (!function.over) return;
    VisitAll(function.over->partition);
    VisitOrder(function.over->order);
}

void QueryWalker::VisitParts(std::initializer_list<const tsql::ExpressionPtr*> parts) {
    for (const tsql::ExpressionPtr* part : parts) {
        if (*part) Visit(**part);
    }
}

void QueryWalker::Visit(const tsql::Expression& expression) {
    using Kind = tsql::ExpressionKind;
    switch (expression.kind) {
        case Kind::Literal:
        case Kind::Variable:
            break;
        case Kind::Column:
            OnColumn(As<tsql::ColumnName>(expression).name);
            break;
        case Kind::Negate:
            VisitParts({&As<tsql::Negate>(expression).operand});
            break;
        case Kind::Arithmetic: {
            const auto& node = As<tsql::Arithmetic>(expression);
            VisitParts({&node.left, &node.right});
            break;
        }
        case Kind::Cast: {
            const auto& node = As<tsql::Cast>(expression);
            VisitParts({&node.operand, &node.style});
            break;
        }
        case Kind::Case: {
            const auto& node = As<tsql::Case>(expression);
            VisitParts({&node.operand, &node.otherwise});
            for (const auto& branch : node.branches) VisitParts({&branch.when, &branch.then});
            break;
        }
        case Kind::Function:
            VisitFunction(As<tsql::Function>(expression));
            break;
        case Kind::Subquery:
            Visit(*As<tsql::Subquery>(expression).query);
            break;
        default:
            VisitCondition(expression);
    }
}

void QueryWalker::VisitCondition(const tsql::Expression& expression) {
    using Kind = tsql::ExpressionKind;
    switch (expression.kind) {
        case Kind::Comparison: {
            const auto& node = As<tsql::Comparison>(expression);
            VisitParts({&node.left, &node.right});
            break;
        }
        case Kind::Junction:
            VisitAll(As<tsql::Junction>(expression).terms);
            break;
        case Kind::Not:
            VisitParts({&As<tsql::Not>(expression).operand});
            break;
        case Kind::IsNull:
            VisitParts({&As<tsql::IsNull>(expression).operand});
            break;
        case Kind::Like: {
            const auto& node = As<tsql::Like>(expression);
            VisitParts({&node.operand, &node.pattern, &node.escape});
            break;
        }
        case Kind::In: {
            const auto& node = As<tsql::In>(expression);
            VisitParts({&node.operand});
            VisitAll(node.values);
            if (node.query) Visit(*node.query);
            break;
        }
        case Kind::Between: {
            const auto& node = As<tsql::Between>(expression);
            VisitParts({&node.operand, &node.low, &node.high});
            break;
        }
        case Kind::Exists:
            Visit(*As<tsql::Exists>(expression).query);
            break;
        case Kind::Quantified: {
            const auto& node = As<tsql::Quantified>(expression);
            VisitParts({&node.operand});
            Visit(*node.query);
            break;
        }
        default:
            break;
    }
}

}  // namespace quarv::localdb::engine
