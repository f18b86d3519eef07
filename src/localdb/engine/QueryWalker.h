// QueryWalker: visits all that a query consists of, the queries within it included, and tells what
// it meets. Whoever wants to know something of a query's text derives from it.
#pragma once

#include <initializer_list>

#include "localdb/tsql/Query.h"

namespace quarv::localdb::engine {

class QueryWalker {
  public:
    virtual ~QueryWalker() = default;

    void Visit(const tsql::Query& query);

  protected:
    // Around everything of a query; not around the arms of a set operation as one.
    virtual void Enter(const tsql::Query&) {}
    virtual void Leave(const tsql::Query&) {}
    virtual void OnTable(const tsql::NamedTable&) {}
    virtual void OnColumn(const tsql::ObjectName&) {}
    // "*" or "t.*", not that of COUNT(*).
    virtual void OnStar(const tsql::SelectItem&) {}

  private:
    void Visit(const tsql::TableSource& source);
    void Visit(const tsql::Expression& expression);
    void VisitCondition(const tsql::Expression& expression);
    void VisitFunction(const tsql::Function& function);
    // Some of the parts may be nothing.
    void VisitParts(std::initializer_list<const tsql::ExpressionPtr*> parts);
    void VisitAll(const tsql::ExpressionList& list);
    void VisitOrder(const std::vector<tsql::OrderItem>& items);
};

}  // namespace quarv::localdb::engine
