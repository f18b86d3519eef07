// TableChange: moves the rows of a table into another form: other types, other stored columns,
// another key to be stored by. Inside the caller's transaction; borrows everything.
#pragma once

#include <map>

#include "localdb/engine/BoundExpression.h"
#include "localdb/engine/Frame.h"

namespace quarv::localdb::engine {

class TableChange {
  public:
    // `before` is the table as it is stored now.
    TableChange(Frame& frame, Metadata& metadata, const TableInfo& before)
        : frame_(frame), metadata_(metadata), before_(before) {}

    // Computed columns that `after` stores and the table does not yet get their place and values;
    // nothing is done where there are none.
    void StoreComputed(TableInfo& after);
    // What columns hold, by their numbers, where that is neither what they held nor computed.
    using Values = std::map<int, BoundPtr>;
    // The rows as `after` wants them, indexes included; values are converted. Raises what
    // converting raises and SqlError 1505.
    void Rebuild(TableInfo& after, Values values = {});

  private:
    Source StoredColumns() const;

    Frame& frame_;
    Metadata& metadata_;
    const TableInfo& before_;
};

}  // namespace quarv::localdb::engine
