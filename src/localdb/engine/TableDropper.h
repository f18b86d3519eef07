// TableDropper: ALTER TABLE ... DROP: constraints of every kind, then columns that nothing rests
// on.
#pragma once

#include "localdb/engine/TableAlter.h"

namespace quarv::localdb::engine {

class TableDropper : public TableAlter {
  public:
    using TableAlter::TableAlter;

  protected:
    // Raises SqlError 3727 or 4922 behind what is in the way, 4923 and 4924.
    void Change() override;

  private:
    using Item = tsql::AlterTable::DroppedItem;

    void DropConstraint(const Item& item);
    // False where the table has no key of that name.
    bool TryDropKey(const QString& name);
    bool TryDropOther(const QString& name);
    void DropColumn(const Item& item);
    void Reload();
};

}  // namespace quarv::localdb::engine
