// ColumnChanger: ALTER TABLE ... ALTER COLUMN: another type or nullability for a column, its values
// converted as an INSERT would convert them. What rests on the column must bear the change.
#pragma once

#include "localdb/engine/ColumnDependents.h"
#include "localdb/engine/TableAlter.h"

namespace quarv::localdb::engine {

class ColumnChanger : public TableAlter {
  public:
    using TableAlter::TableAlter;

  protected:
    // Raises SqlError 4922 behind what is in the way, 4924, 4927, 4928, 515, 2628, 2749, 8147 and
    // what converting raises.
    void Change() override;

  private:
    ColumnInfo NewForm(const ColumnInfo& old);
    void CheckKind(const ColumnInfo& old, const ColumnInfo& column) const;
    void CheckDependents(const ColumnInfo& old, const ColumnInfo& column);
    void Store(const ColumnInfo& old, const ColumnInfo& column);
    bool IsIndexed(const ColumnInfo& column) const;
};

}  // namespace quarv::localdb::engine
