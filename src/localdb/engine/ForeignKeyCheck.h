// ForeignKeyCheck: whether the rows that a statement writes find the key that they refer to. A key
// of the same table may still come, so what is missing there is asked for again at the end.
#pragma once

#include "localdb/engine/Frame.h"
#include "localdb/engine/Metadata.h"

namespace quarv::localdb::engine {

class ForeignKeyCheck {
  public:
    using Row = std::vector<OwnedValue>;

    // `key` is one of `table`'s; both outlive this.
    ForeignKeyCheck(Frame& frame, Metadata& metadata, const TableInfo& table,
                    const ForeignKeyInfo& key, const QString& statement);

    // Raise SqlError 547.
    void Take(const Row& row);
    void Finish();

  private:
    bool IsThere(const Row& key);
    [[noreturn]] void Raise();

    Store& store_;
    Metadata& metadata_;
    const TableInfo& table_;
    const ForeignKeyInfo& key_;
    const QString statement_;
    std::vector<size_t> places_;  // of the key's columns in a row
    SqliteStatement find_;        // made for the first row
    std::vector<Row> waiting_;    // the keys alone
};

// "c1 = ?1 AND c2 = ?2" for the columns with these numbers, parameters from `first` on.
std::string KeyCondition(const std::vector<int>& columns, int first = 1);

}  // namespace quarv::localdb::engine
