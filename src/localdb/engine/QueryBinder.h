// QueryBinder: gives a query's tree a meaning: its sources, its columns, its groups and its order.
#pragma once

#include "localdb/engine/BoundQuery.h"
#include "localdb/engine/ExpressionBinder.h"

namespace quarv::localdb::engine {

class QueryBinder {
  public:
    // `outer` is the scope of the query around this one, or nothing.
    QueryBinder(BindContext& context, const Scope* outer) : context_(context), scope_(outer) {}

    // Each raises SqlError.
    std::unique_ptr<BoundQuery> Bind(const tsql::Query& query);
    // A query inside another: ORDER BY only with TOP or OFFSET, no assignment.
    std::unique_ptr<BoundQuery> BindSub(const tsql::Query& query);
    // The same, with exactly one column.
    std::unique_ptr<BoundQuery> BindScalar(const tsql::Query& query);

    // FROM, WHERE and TOP alone, `target` in front of the sources where it is not among them.
    std::unique_ptr<BoundQuery> BindRows(const tsql::Query& query, const tsql::NamedTable* target);
    // The names of the query that was bound last.
    const Scope& Names() const { return scope_; }

  private:
    void BindFrom(const tsql::Query& query);
    std::unique_ptr<BoundSource> BindSource(const tsql::TableSource& source);
    std::unique_ptr<BoundSource> BindTable(const tsql::NamedTable& table);
    std::unique_ptr<BoundSource> BindStored(const Metadata& metadata, const TableInfo& info,
                                            const tsql::NamedTable& table);
    void BindComputed(const TableInfo& table, Source& source);
    std::unique_ptr<BoundSource> BindView(const ObjectInfo& view, Metadata& metadata,
                                          const tsql::NamedTable& table);
    std::unique_ptr<BoundSource> BindSystemView(const SystemView& view, Metadata& metadata,
                                                const tsql::NamedTable& table);
    std::unique_ptr<BoundSource> BindDerived(const tsql::DerivedTable& table);
    std::unique_ptr<BoundSource> BindJoin(const tsql::Join& join);
    void AddQuerySource(const BoundQuery& query, const std::vector<QString>& names,
                        const tsql::NamedTable* table, const QString& alias,
                        const std::string& storageAlias);
    void BindItems(const tsql::Query& query);
    void AddStar(const tsql::SelectItem& item);
    void AddColumn(const SourceColumn& column);
    void AddItem(const tsql::SelectItem& item);
    void AddAssignment(const tsql::SelectItem& item);
    void BindGrouping(const tsql::Query& query);
    void BindOrder(const tsql::Query& query);
    BoundOrder BindOrderItem(const tsql::OrderItem& item);
    void BindLimits(const tsql::Query& query);
    // Raises `number` for a column that is in no group and no aggregate.
    void CheckGrouped(const BoundExpression& expression, int number) const;

    BindContext& context_;
    Scope scope_;
    std::unique_ptr<BoundQuery> result_;
};

}  // namespace quarv::localdb::engine
