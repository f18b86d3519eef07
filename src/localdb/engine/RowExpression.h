// RowExpression: an expression over the columns of one row of a table, computed without asking the
// storage: what a CHECK demands, what a computed column holds. Borrows the table that it was bound
// to and the session's frame.
#pragma once

#include <set>

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/Frame.h"

namespace quarv::localdb::engine {

class RowExpression {
  public:
    enum class Kind : uint8_t { Value, Condition };

    // Raises SqlError: what binding raises, 1046 for a query inside, 1759 for a computed column in
    // a value, 137 for a variable.
    RowExpression(Frame& frame, const TableInfo& table, const tsql::Expression& tree, Kind kind);
    // From the catalogue's text of a check or computed column.
    RowExpression(Frame& frame, const TableInfo& table, const QString& text, Kind kind);

    // `row` has one value for each of the table's columns. The result's text lives until the next
    // call. Raises SqlError.
    SqlValue Evaluate(const std::vector<OwnedValue>& row);

    const SqlType& Type() const { return root_->type; }
    CollationId Collation() const { return root_->Collates().id; }
    bool IsNullable() const;
    // False where it may differ from one moment to the next.
    bool IsDeterministic() const;
    // The places of the columns that it reads.
    const std::set<size_t>& Columns() const { return columns_; }
    // Makes the value one of `type`. Raises SqlError 206 or 257.
    void ConvertTo(const SqlType& type);

  private:
    void Bind(const TableInfo& table, const tsql::Expression& tree, Kind kind);
    void AssignSlots(const BoundExpression& node);

    Frame& frame_;
    BoundPtr root_;
    std::set<size_t> columns_;
    std::vector<SqlValue> leaves_;  // by the column's place
    TextArena arena_;
};

}  // namespace quarv::localdb::engine
