// QueryBinder: gives a query's tree a meaning: its sources, its columns, its groups and its order.
#pragma once

#include "localdb/engine/BoundQuery.h"
#include "localdb/engine/ExpressionBinder.h"

namespace quarv::localdb::engine {

struct ChangedSource;

class QueryBinder {
  public:
    // `outer` is the scope of the query around this one, or nothing.
    QueryBinder(BindContext& context, const Scope* outer)
        : context_(context), outer_(outer), scope_(outer) {}

    // Each raises SqlError.
    std::unique_ptr<BoundQuery> Bind(const tsql::Query& query);
    // A query inside another: ORDER BY only with TOP or OFFSET, no assignment.
    std::unique_ptr<BoundQuery> BindSub(const tsql::Query& query);
    // The same, with exactly one column.
    std::unique_ptr<BoundQuery> BindScalar(const tsql::Query& query);

    // FROM, WHERE and TOP alone, `target` in front of the sources where it is not among them.
    std::unique_ptr<BoundQuery> BindRows(const tsql::Query& query, const tsql::NamedTable* target);
    // The source of BindRows, or of a layer's query, that leads to the table which a statement
    // changes; borrowed. In ChangedSource.cpp.
    void SetChanged(ChangedSource& changed, size_t layer);
    // The names of the query that was bound last.
    const Scope& Names() const { return scope_; }
    // The tables of WITH, which names mean from now on. In CommonTables.cpp.
    std::vector<BoundCommon> BindCommons(const tsql::WithClause& with);

  private:
    std::unique_ptr<BoundQuery> BindSimple(const tsql::Query& query);
    void BindSetGroups(const tsql::Query& query);
    void AddHiddenOrder(const tsql::Query& query);
    // In CompoundBinder.cpp: what is a query around others.
    std::unique_ptr<BoundQuery> BindCompound(const tsql::Query& query);
    std::unique_ptr<BoundQuery> BindGroupingSets(const tsql::Query& query);
    // The first `count` queries of a set operation, without order.
    std::unique_ptr<BoundQuery> BindArms(const tsql::Query& query, size_t count);
    void OrderSets(const tsql::Query& query);
    BoundOrder CompoundOrder(const tsql::OrderItem& item) const;
    std::optional<BoundOrder> FindOrdinal(const tsql::OrderItem& item) const;
    std::optional<BoundOrder> FindAlias(const tsql::OrderItem& item) const;

    BoundCommon BindCommon(const tsql::CommonTable& table);
    void BindRecursiveArm(const tsql::Query& query, CommonInfo& info, BoundCommon& bound);
    std::unique_ptr<BoundSource> BindCommonTable(CommonInfo& common, const tsql::NamedTable& table);

    void BindFrom(const tsql::Query& query);
    std::unique_ptr<BoundSource> BindSource(const tsql::TableSource& source);
    std::unique_ptr<BoundSource> BindChanged(const tsql::TableSource& source);
    std::unique_ptr<BoundSource> BindLayer(const tsql::TableSource& source);
    std::unique_ptr<BoundSource> BindTable(const tsql::NamedTable& table);
    std::unique_ptr<BoundSource> BindStored(const Metadata& metadata, const TableInfo& info,
                                            const tsql::NamedTable& table);
    void BindComputed(const TableInfo& table, Source& source);
    std::unique_ptr<BoundSource> BindView(const ObjectInfo& view, Metadata& metadata,
                                          const tsql::NamedTable& table);
    std::unique_ptr<BoundSource> BindSystemView(const SystemView& view, Metadata& metadata,
                                                const tsql::NamedTable& table);
    // `around`: the names that the table may use, of queries around this one and of an apply's left
    // side; or nothing.
    std::unique_ptr<BoundSource> BindDerived(const tsql::DerivedTable& table, const Scope* around);
    std::unique_ptr<BoundQuery> BindRowsOfValues(const tsql::DerivedTable& table,
                                                 const Scope* around);
    // In TableFunctions.cpp.
    std::unique_ptr<BoundSource> BindFunctionTable(const tsql::DerivedTable& table,
                                                   const Scope* around);
    static void BindSplit(std::vector<BoundPtr> arguments, BoundSource& bound, Source& source);
    static void BindSeries(std::vector<BoundPtr> arguments, BoundSource& bound, Source& source);
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
    // A binder for select items, HAVING and ORDER BY, where aggregates may stand.
    ExpressionBinder ItemBinder(bool windows) const;
    // Raises `number` for a column that is in no group and no aggregate.
    void CheckGrouped(const BoundExpression& expression, int number) const;

    BindContext& context_;
    const Scope* outer_;
    Scope scope_;
    std::unique_ptr<BoundQuery> result_;
    // Where GROUP BY has several sets: the one that this query is bound for.
    const std::vector<size_t>* set_ = nullptr;
    GroupingState grouping_;
    ChangedSource* changed_ = nullptr;  // or nothing
    size_t layer_ = 0;
    const tsql::TableSource* target_ = nullptr;  // the source that `changed_` is about
};

}  // namespace quarv::localdb::engine
