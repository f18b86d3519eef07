// ExistingRows: whether the rows that a table has keep a constraint that is only now being made or
// enabled. The storage looks through them; nothing is read row by row. Inside the caller's
// transaction; borrows everything.
#pragma once

#include "localdb/engine/Frame.h"

namespace quarv::localdb::engine {

class ExistingRows {
  public:
    // The table as the catalogue and the storage have it now.
    ExistingRows(Frame& frame, Metadata& metadata, const TableInfo& table)
        : frame_(frame), metadata_(metadata), table_(table) {}

    // Raise SqlError 547, and what the check's expression raises.
    void Check(const CheckInfo& check);
    void Check(const ForeignKeyInfo& key);

  private:
    Frame& frame_;
    Metadata& metadata_;
    const TableInfo& table_;
};

}  // namespace quarv::localdb::engine
