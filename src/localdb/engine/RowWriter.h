// RowWriter: puts changed rows back into a table's storage, by what tells each row from the others.
// Checks nothing but keys. Inside the caller's transaction; borrows everything.
#pragma once

#include "localdb/engine/RowChecker.h"
#include "localdb/engine/Store.h"

namespace quarv::localdb::engine {

class RowWriter {
  public:
    using Row = std::vector<OwnedValue>;

    RowWriter(Store& store, const Metadata& metadata, const TableInfo& table);

    // `identity` as TableStorage::RowIdentity has it. Raises SqlError 2601 or 2627.
    void Update(const Row& identity, const Row& row);
    void Delete(const Row& identity);

  private:
    int BindIdentity(SqliteStatement& statement, const Row& identity, int first) const;

    const TableInfo& table_;
    const RowChecker checker_;
    const std::vector<SqlType> types_;  // of the identity
    SqliteStatement update_, delete_;
};

}  // namespace quarv::localdb::engine
