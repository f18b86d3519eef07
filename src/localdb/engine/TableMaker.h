// TableMaker: writes a table that TableBuilder made into the catalogue and the storage. Inside the
// caller's transaction; borrows everything.
#pragma once

#include "localdb/engine/Metadata.h"

namespace quarv::localdb::engine {

class TableMaker {
  public:
    TableMaker(Store& store, Metadata& metadata) : store_(store), metadata_(metadata) {}

    // A whole new table. Raises SqlError 2714.
    void Create(TableInfo& table);

    // Parts that the catalogue does not have yet; each gets its number. Raise SqlError 2714.
    void AddDefault(const TableInfo& table, ColumnInfo& column);
    void AddIndex(const TableInfo& table, IndexInfo& index);
    void AddCheck(const TableInfo& table, CheckInfo& check);
    void AddForeignKey(const TableInfo& table, ForeignKeyInfo& key);

  private:
    int64_t AddConstraint(const TableInfo& table, const QString& name, const QString& type,
                          const QString& definition, bool systemNamed);

    Store& store_;
    Metadata& metadata_;
};

}  // namespace quarv::localdb::engine
