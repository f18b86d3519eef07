// Transactions: the transaction of one session over its store. A transaction that the client began
// takes no lock before its first change, so what it reads until then is what others have committed;
// from its first change on it holds the database's write lock.
#pragma once

#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "localdb/engine/ResultSink.h"
#include "localdb/engine/Store.h"

namespace quarv::localdb::engine {

class Transactions {
  public:
    // `process` is the session's number, which messages name.
    Transactions(Store& store, int process) : store_(store), process_(process) {}

    // Every rollback is run by `undo`, which keeps what outlives it.
    using Undo = std::function<void(const std::function<void()>&)>;
    void SetUndo(Undo undo) { undo_ = std::move(undo); }

    int Count() const { return count_; }
    // An error that would have ended the batch was caught: nothing may be written or committed any
    // more, only rolled back.
    void Doom() { doomed_ = count_ > 0; }
    bool Doomed() const { return doomed_; }
    // Raises SqlError 3930 where it is doomed.
    void CheckWritable() const;

    // The name of the outermost one counts, for Rollback.
    void Begin(const QString& name, ResultSink& sink);
    // Raises SqlError 3902 where none is open. Only the outermost commit commits.
    void Commit(ResultSink& sink);
    // Rolls everything back; with a savepoint's name back to it. Raises SqlError 3903 or 6401.
    void Rollback(const QString& name, ResultSink& sink);
    void Save(const QString& name);
    // From REPEATABLE READ on, all that a transaction reads is of one state of the database.
    void SetOneState(bool one) { oneState_ = one; }
    // Rolls back without a word where a session ends or is reset.
    void Abandon();

    // One statement that reads: it sees one state of the database from its begin to its end.
    class Reading;
    // One statement that changes `prefix`'s database ("d5."): undone as a whole unless Commit was
    // called. Raises SqlError 1222 where another session holds the lock for too long.
    class Writing;

    // Several statements that are undone as a whole unless Commit was called. Inside it @@TRANCOUNT
    // is 1 at least; the client hears nothing of it.
    class Whole;

    // What is open was lost because a change failed hard (a full disk): the client hears of it.
    void CheckLost(ResultSink& sink);

  private:
    void Forget();
    void End(bool committed, ResultSink& sink);
    void UndoBy(const std::string& sql);

    Store& store_;
    const int process_;
    Undo undo_;
    int count_ = 0;
    uint64_t id_ = 0;
    QString name_;
    bool changed_ = false;  // the storage's transaction was begun
    bool doomed_ = false;
    bool oneState_ = false;
    bool hidden_ = false;  // a Whole's: the client was not told that it began
    std::vector<QString> savepoints_;
};

class Transactions::Reading {
  public:
    explicit Reading(Transactions& transactions);
    ~Reading();
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

  private:
    Store& store_;
    CatalogueCache::Statement statement_;
    SqliteStatement* end_ = nullptr;  // nothing inside a transaction
};

class Transactions::Whole {
  public:
    explicit Whole(Transactions& transactions);
    ~Whole();
    Whole(const Whole&) = delete;
    Whole& operator=(const Whole&) = delete;
    void Commit();

  private:
    Transactions& transactions_;
    bool own_;
    bool done_ = false;
};

class Transactions::Writing {
  public:
    Writing(Transactions& transactions, const std::string& prefix);
    ~Writing();
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;
    void Commit();

  private:
    void TakeLock(const std::string& prefix);
    void Undo();

    Transactions& transactions_;
    Store& store_;
    CatalogueCache::Statement statement_;
    bool own_;
    bool done_ = false;
};

}  // namespace quarv::localdb::engine
