// Store: one session's connection to the storage library: the database files that it has attached,
// its transaction, and what an expression raised while the library ran it. Owned by the session;
// one thread at a time.
#pragma once

#include <QString>
#include <exception>
#include <functional>
#include <list>
#include <string>
#include <unordered_map>

#include "localdb/engine/CatalogueCache.h"
#include "localdb/engine/DatabaseList.h"
#include "localdb/engine/SqliteStatement.h"

struct sqlite3;

namespace quarv::localdb::engine {

// Thrown through a statement that the client has cancelled.
struct Cancelled {};

// A unique index met a key for the second time. The library's own text names the index or columns.
struct DuplicateKey {
    std::string text;
};

class Store {
  public:
    // Raises SqlError where the library gives no connection.
    Store();
    ~Store();
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    sqlite3* Handle() const { return handle_; }

    // The name under which the database's tables are reached ("d5"), attached at first use. Raises
    // SqlError 945 where the file is missing, damaged or locked.
    std::string Attach(const DatabaseEntry& database);
    // Throws the session's tempdb away. Not inside a transaction.
    void DropTemporary();
    // Lets go of the database's file. Raises SqlError where a transaction has touched it.
    void Detach(int databaseId);

    SqliteStatement Prepare(const std::string& sql) { return SqliteStatement(*this, sql, &pool_); }
    void Run(const std::string& sql) { Prepare(sql).Run(); }
    // A statement that is kept for the next time; reset, its parameters unset.
    SqliteStatement& Cached(const std::string& sql);

    CatalogueCache& Catalogue() { return catalogue_; }

    // Asked while a statement runs and waits; true stops it with Cancelled.
    void SetCancel(std::function<bool()> cancelled) { cancelled_ = std::move(cancelled); }
    // How long a statement waits for another session's lock, in milliseconds; -1: BusyCalls pauses.
    void SetLockTimeout(int milliseconds) { lockTimeout_ = milliseconds; }
    // A running statement may be stopped in its middle: for those that only read.
    class Stoppable;

    // What a registered function raised; Raise throws it on.
    void KeepError(std::exception_ptr error) { error_ = std::move(error); }
    // Throws what a failed call means: a kept error, Cancelled, DuplicateKey or a SqlError.
    [[noreturn]] void Raise(int result);
    bool InTransaction() const;

  private:
    static int OnProgress(void* self);
    static int OnBusy(void* self, int calls);
    std::string AttachTemporary();
    void CheckFormat(const std::string& schema);
    void DetachOldest();
    void ForgetStatements(const std::string& prefix);

    sqlite3* handle_ = nullptr;
    std::exception_ptr error_;
    std::function<bool()> cancelled_;
    bool stoppable_ = false;
    int lockTimeout_ = -1;
    std::list<DatabaseEntry> attached_;  // the last used first
    bool temporaryAttached_ = false;
    std::unordered_map<std::string, SqliteStatement> cache_;
    StatementPool pool_;
    CatalogueCache catalogue_;
};

class Store::Stoppable {
  public:
    explicit Stoppable(Store& store) : store_(store), before_(store.stoppable_) {
        store_.stoppable_ = true;
    }
    ~Stoppable() { store_.stoppable_ = before_; }
    Stoppable(const Stoppable&) = delete;
    Stoppable& operator=(const Stoppable&) = delete;

  private:
    Store& store_;
    bool before_;
};

}  // namespace quarv::localdb::engine
