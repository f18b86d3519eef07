// ConstraintSwitch: ALTER TABLE ... CHECK and NOCHECK CONSTRAINT: checks and foreign keys that are
// asked of no row while they are disabled.
#pragma once

#include "localdb/engine/TableAlter.h"

namespace quarv::localdb::engine {

class ConstraintSwitch : public TableAlter {
  public:
    using TableAlter::TableAlter;

  protected:
    // Raises SqlError 4916 behind 4917 or 11415, and 547 where the rows are asked.
    void Change() override;

  private:
    void Find(const QString& name);
    // A CheckInfo or a ForeignKeyInfo.
    template <typename Constraint>
    void Set(const Constraint& constraint);
};

}  // namespace quarv::localdb::engine
