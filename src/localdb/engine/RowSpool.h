// RowSpool: rows that wait until a statement can go on with them: kept in order in a file of their
// own that vanishes with the spool, outside every transaction. Owns its storage.
#pragma once

#include <vector>

#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"

struct sqlite3;
struct sqlite3_stmt;

namespace quarv::localdb::engine {

class RowSpool {
  public:
    // Raises SqlError 1105 where there is no room, as Append does.
    explicit RowSpool(std::vector<SqlType> types);
    ~RowSpool();
    RowSpool(const RowSpool&) = delete;
    RowSpool& operator=(const RowSpool&) = delete;

    // One value of each type. Not after the first Next.
    void Append(const std::vector<OwnedValue>& row);
    // The next row in the order of Append; false at the end.
    bool Next(std::vector<OwnedValue>& row);
    const std::vector<SqlType>& Types() const { return types_; }

  private:
    void Prepare(const char* sql, sqlite3_stmt** statement);
    void Check(int result);

    const std::vector<SqlType> types_;
    sqlite3* handle_ = nullptr;
    sqlite3_stmt* insert_ = nullptr;
    sqlite3_stmt* select_ = nullptr;
};

}  // namespace quarv::localdb::engine
