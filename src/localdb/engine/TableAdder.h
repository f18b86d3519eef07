// TableAdder: ALTER TABLE ... ADD: columns, keys, indexes, checks, foreign keys and defaults, with
// the values of new columns in the rows that are there.
#pragma once

#include "localdb/engine/RowChecker.h"
#include "localdb/engine/TableAlter.h"
#include "localdb/engine/TableChange.h"

namespace quarv::localdb::engine {

class TableAdder : public TableAlter {
  public:
    using TableAlter::TableAlter;

  protected:
    // Raises SqlError 4901, what TableBuilder raises, 515, 547, 1505, 2628, 8115.
    void Change() override;

  private:
    void Add();
    void CheckFillable(const TableInfo& after) const;
    void AddColumns(TableInfo& after, bool hasRows);
    TableChange::Values NewValues(TableInfo& after, const RowChecker& checker);
    BoundPtr NumberRows(const ColumnInfo& column, int64_t first, int64_t step) const;
    BoundPtr IdentityValues(TableInfo& after, const ColumnInfo& column);
    BoundPtr VersionValues(const ColumnInfo& column);
    bool TakesDefault(const ColumnInfo& column) const;
    void StoreColumns(TableInfo& after);
    void AddIndexes(TableInfo& after);
    void AddConditions(TableInfo& after);
};

}  // namespace quarv::localdb::engine
