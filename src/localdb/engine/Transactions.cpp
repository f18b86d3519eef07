#include "localdb/engine/Transactions.h"

#include <sqlite3.h>

#include <atomic>

#include "localdb/engine/ObjectInfo.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

uint64_t NextId() {
    static std::atomic<uint64_t> last{0};
    return ++last;
}

std::string SavepointName(size_t index) {
    return "u" + std::to_string(index);
}

// Where undoing fails there is nothing left to undo.
void RunQuietly(Store& store, const std::string& sql) {
    store.Catalogue().DoubtAll();
    sqlite3_exec(store.Handle(), sql.c_str(), nullptr, nullptr, nullptr);
}

}  // namespace

void Transactions::Begin(const QString& name, ResultSink& sink) {
    if (count_++ > 0) return;
    name_ = name;
    id_ = NextId();
    sink.TransactionBegan(id_);
}

void Transactions::Forget() {
    count_ = 0;
    changed_ = false;
    doomed_ = false;
    hidden_ = false;
    savepoints_.clear();
    store_.Catalogue().DoubtAll();
}

void Transactions::End(bool committed, ResultSink& sink) {
    const bool hidden = hidden_;
    Forget();
    if (!hidden) sink.TransactionEnded(id_, committed);
}

void Transactions::UndoBy(const std::string& sql) {
    const auto run = [this, &sql] { RunQuietly(store_, sql); };
    if (undo_) {
        undo_(run);
    } else {
        run();
    }
}

void Transactions::Commit(ResultSink& sink) {
    if (count_ == 0) throw SqlError(3902);
    CheckWritable();
    if (count_ > 1) {
        --count_;
        return;
    }
    if (changed_) store_.Cached("COMMIT").Run();
    End(true, sink);
}

void Transactions::Rollback(const QString& name, ResultSink& sink) {
    if (count_ == 0) throw SqlError(3903);
    for (size_t i = savepoints_.size(); !name.isEmpty() && i-- > 0;) {
        if (!SameName(savepoints_[i], name)) continue;
        if (doomed_) throw SqlError(3931);
        UndoBy("ROLLBACK TO " + SavepointName(i));
        savepoints_.resize(i + 1);
        return;
    }
    if (!name.isEmpty() && !SameName(name, name_)) throw SqlError(6401, {name});
    if (changed_) UndoBy("ROLLBACK");
    End(false, sink);
}

void Transactions::Save(const QString& name) {
    if (count_ == 0) throw SqlError(628);
    CheckWritable();
    if (!changed_) store_.Cached("BEGIN").Run();
    changed_ = true;
    store_.Catalogue().DoubtAll();
    store_.Run("SAVEPOINT " + SavepointName(savepoints_.size()));
    savepoints_.push_back(name);
}

void Transactions::Abandon() {
    if (store_.InTransaction()) RunQuietly(store_, "ROLLBACK");
    Forget();
}

void Transactions::CheckWritable() const {
    if (doomed_) throw SqlError(3930);
}

void Transactions::CheckLost(ResultSink& sink) {
    if (count_ > 0 && changed_ && !store_.InTransaction()) End(false, sink);
}

Transactions::Reading::Reading(Transactions& transactions)
    : store_(transactions.store_), statement_(store_) {
    if (store_.InTransaction()) return;
    SqliteStatement& end = store_.Cached("ROLLBACK");
    store_.Cached("BEGIN").Run();
    // From this level on the transaction keeps what this statement begins to see.
    if (transactions.count_ > 0 && transactions.oneState_) {
        transactions.changed_ = true;
    } else {
        end_ = &end;
    }
}

// Where it fails there is nothing left to end.
Transactions::Reading::~Reading() {
    if (!end_) return;
    sqlite3_step(end_->Handle());
    end_->Reset();
}

Transactions::Whole::Whole(Transactions& transactions)
    : transactions_(transactions), own_(transactions.count_ == 0) {
    transactions.CheckWritable();
    Store& store = transactions.store_;
    if (!store.InTransaction()) store.Cached("BEGIN").Run();
    transactions.changed_ = true;
    if (own_) {
        transactions.count_ = 1;
        transactions.hidden_ = true;
    } else {
        store.Cached("SAVEPOINT w").Run();
    }
}

Transactions::Whole::~Whole() {
    // An error may have undone the transaction around it; then nothing is left.
    if (done_ || transactions_.count_ == 0) return;
    if (own_) {
        transactions_.UndoBy("ROLLBACK");
        transactions_.Forget();
    } else {
        transactions_.UndoBy("ROLLBACK TO w; RELEASE w");
    }
}

void Transactions::Whole::Commit() {
    if (own_) {
        transactions_.store_.Cached("COMMIT").Run();
        transactions_.Forget();
    } else {
        transactions_.store_.Cached("RELEASE w").Run();
    }
    done_ = true;
}

Transactions::Writing::Writing(Transactions& transactions, const std::string& prefix)
    : transactions_(transactions),
      store_(transactions.store_),
      statement_(store_),
      own_(transactions.count_ == 0) {
    transactions.CheckWritable();
    if (!store_.InTransaction()) store_.Cached("BEGIN").Run();
    try {
        if (!own_) {
            transactions_.changed_ = true;
            store_.Cached("SAVEPOINT q").Run();
        }
        TakeLock(prefix);
    } catch (...) {
        // Others have changed the database since this transaction has begun to see one state of it.
        const bool stale = sqlite3_extended_errcode(store_.Handle()) == SQLITE_BUSY_SNAPSHOT;
        Undo();
        if (!stale) throw;
        throw SqlError(1205, {QString::number(transactions_.process_), QStringLiteral("lock")});
    }
}

// The write lock is taken before anything is read, so that nobody can change what this statement
// has read before it writes. A transaction that has it keeps it.
void Transactions::Writing::TakeLock(const std::string& prefix) {
    const std::string schema = prefix.substr(0, prefix.size() - 1);
    if (sqlite3_txn_state(store_.Handle(), schema.c_str()) == SQLITE_TXN_WRITE) return;
    store_.Cached("DELETE FROM " + prefix + "q_meta WHERE key = ''").Run();
}

Transactions::Writing::~Writing() {
    if (!done_) Undo();
}

void Transactions::Writing::Undo() {
    done_ = true;
    if (own_) {
        RunQuietly(store_, "ROLLBACK");
    } else {
        RunQuietly(store_, "ROLLBACK TO q");
        RunQuietly(store_, "RELEASE q");
    }
}

void Transactions::Writing::Commit() {
    store_.Cached(own_ ? "COMMIT" : "RELEASE q").Run();
    done_ = true;
}

}  // namespace quarv::localdb::engine
