// TableStorage: the storage tables and indexes behind the tables of the catalogue. A table with a
// unique clustered key without nulls is stored in that key's order.
#pragma once

#include "localdb/engine/Metadata.h"

namespace quarv::localdb::engine {

class SqlWriter;

class TableStorage {
  public:
    TableStorage(Store& store, const Metadata& metadata)
        : store_(store), prefix_(metadata.Prefix()) {}

    // With all indexes that the table has, of which it marks the one that the rows are stored by.
    // Inside the caller's transaction.
    void Create(TableInfo& table);
    // Makes the storage of `before` that of `after`, whose columns take their values from
    // `expressions` (storage SQL over the old columns), one for each stored column. Raises what
    // they raise and SqlError 1505.
    void Rebuild(const TableInfo& before, TableInfo& after, SqlWriter& expressions);
    void AddColumn(const TableInfo& table, const ColumnInfo& column);
    // No index or key may be on it.
    void DropColumn(const TableInfo& table, const ColumnInfo& column);
    // Raises SqlError 1505 where a unique index meets equal rows.
    void CreateIndex(const TableInfo& table, const IndexInfo& index);
    void DropIndex(const TableInfo& table, const IndexInfo& index);
    void Drop(const TableInfo& table);

    // The index that the last failed insertion violated; nothing where none was.
    static const IndexInfo* FindViolated(const TableInfo& table, const std::string& libraryError);
    // "INSERT INTO d5.t1(c1, c2) VALUES (?1, ?2)", all columns in their order.
    // `numbered`: behind them the number of the row, of a table without StorageKey.
    std::string InsertSql(const TableInfo& table, bool numbered = false) const;
    // The index in whose order the table is stored; nothing for a heap, whose rows have numbers.
    static const IndexInfo* StorageKey(const TableInfo& table) { return table.StorageKey(); }
    // The storage columns that tell one row from every other, and how they are read and bound.
    static std::vector<std::string> RowIdentity(const TableInfo& table);
    static std::vector<SqlType> RowIdentityTypes(const TableInfo& table);

  private:
    void CreateTable(TableInfo& table, const std::string& name);
    static bool IsStorageKey(const TableInfo& table, const IndexInfo& index);
    static std::string KeyList(const IndexInfo& index);
    void CreateNullGuard(const TableInfo& table, const IndexInfo& index);
    [[noreturn]] void RaiseDuplicate(const TableInfo& table, const IndexInfo& index);

    Store& store_;
    std::string prefix_;
};

}  // namespace quarv::localdb::engine
