// ColumnFit: a value as a column takes it: raises where it is null or too long there, and fills it
// up to a fixed length. Part of what the storage calls back for, row by row.
#pragma once

#include "localdb/engine/BoundExpression.h"
#include "localdb/engine/RowChecker.h"

namespace quarv::localdb::engine {

class ColumnFit : public BoundExpression {
  public:
    // Converts the value first; `checker` and `column` outlive this. Raises SqlError 206 or 257.
    ColumnFit(BoundPtr value, const ColumnInfo& column, const RowChecker& checker)
        : checker_(checker), column_(column) {
        type = column.type;
        nullable = column.nullable;
        parts.push_back(RowChecker::ConvertTo(std::move(value), column));
    }
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return checker_.Fit(column_, parts[0]->Evaluate(evaluation), *evaluation.arena);
    }

  private:
    const RowChecker& checker_;
    const ColumnInfo& column_;
};

}  // namespace quarv::localdb::engine
