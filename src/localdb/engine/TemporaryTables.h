// TemporaryTables: what one session keeps in its own tempdb: the temporary tables (#t) with the
// call level that made each, and the table variables of its running batches, whose rows no rollback
// takes away. Owned by the session.
#pragma once

#include <QString>
#include <functional>
#include <list>
#include <memory>
#include <vector>

#include "localdb/engine/ObjectInfo.h"

namespace quarv::localdb::engine {

class Metadata;
class RowSpool;
class Store;
class Transactions;

class TemporaryTables {
  public:
    TemporaryTables(Store& store, Transactions& transactions);
    ~TemporaryTables();
    TemporaryTables(const TemporaryTables&) = delete;
    TemporaryTables& operator=(const TemporaryTables&) = delete;

    // "#t". Raises SqlError 40517 for a global one ("##t").
    static bool IsTemporary(const QString& name, int line = 0);
    // The name as tempdb shows it: filled up and numbered, 128 characters.
    static QString StoredName(const QString& name, int64_t objectId);
    // The part of it that all tables of that name share, 116 characters.
    static QString SharedName(const QString& name);
    // The name that was written, of a stored one; any other name as it is.
    static QString WrittenName(const QString& stored);

    // Gives a new table (its id is known) its stored name where it is a temporary one, made on this
    // call level; 0 is the batch. It hides one of the same name that an outer level made; raises
    // SqlError 2714 where this level has one.
    void Name(ObjectInfo& table, Metadata& metadata, int level);
    // Drops what the level made; never raises.
    void EndLevel(int level);
    // Forgets everything where the session begins anew.
    void Clear();

    // An id for a table variable; never used twice in a session.
    int64_t NextVariableId() { return nextVariable_++; }
    // Makes the table variable's storage. It lives until DropVariable, which never raises.
    void MakeVariable(const std::shared_ptr<TableInfo>& table);
    void DropVariable(const TableInfo& table);
    // Runs `undo`, which takes back changes of the store, and keeps the table variables' rows.
    void Undo(const std::function<void()>& undo);

  private:
    struct Entry {
        int64_t objectId;
        int level;
    };
    void DropTable(int64_t objectId);
    std::unique_ptr<RowSpool> Keep(const TableInfo& table);
    void Restore(const TableInfo& table, RowSpool& rows);

    Store& store_;
    Transactions& transactions_;
    std::vector<Entry> made_;
    std::list<std::shared_ptr<TableInfo>> variables_;
    int64_t nextVariable_ = 1'000'000'000;  // beyond the ids of objects
};

}  // namespace quarv::localdb::engine
