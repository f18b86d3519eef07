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
void RunQuietly(Store& store, const char* sql) {
    sqlite3_exec(store.Handle(), sql, nullptr, nullptr, nullptr);
}

}  // namespace

void Transactions::Begin(const QString& name, ResultSink& sink) {
    if (count_++ > 0) return;
    name_ = name;
    id_ = NextId();
    sink.TransactionBegan(id_);
}

void Transactions::End(bool committed, ResultSink& sink) {
    count_ = 0;
    changed_ = false;
    savepoints_.clear();
    sink.TransactionEnded(id_, committed);
}

void Transactions::UndoBy(const std::string& sql) {
    const auto run = [this, &sql] { RunQuietly(store_, sql.c_str()); };
    if (undo_) {
        undo_(run);
    } else {
        run();
    }
}

void Transactions::Commit(ResultSink& sink) {
    if (count_ == 0) throw SqlError(3902);
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
    if (!changed_) store_.Cached("BEGIN").Run();
    changed_ = true;
    store_.Run("SAVEPOINT " + SavepointName(savepoints_.size()));
    savepoints_.push_back(name);
}

void Transactions::Abandon() {
    if (store_.InTransaction()) RunQuietly(store_, "ROLLBACK");
    count_ = 0;
    changed_ = false;
    savepoints_.clear();
}

void Transactions::CheckLost(ResultSink& sink) {
    if (count_ > 0 && changed_ && !store_.InTransaction()) End(false, sink);
}

Transactions::Reading::Reading(Transactions& transactions)
    : store_(transactions.store_), own_(!store_.InTransaction()) {
    if (own_) store_.Cached("BEGIN").Run();
}

Transactions::Reading::~Reading() {
    if (own_) RunQuietly(store_, "ROLLBACK");
}

Transactions::Writing::Writing(Transactions& transactions, const std::string& prefix)
    : transactions_(transactions), store_(transactions.store_), own_(transactions.count_ == 0) {
    if (!store_.InTransaction()) store_.Cached("BEGIN").Run();
    try {
        if (!own_) {
            transactions_.changed_ = true;
            store_.Cached("SAVEPOINT q").Run();
        }
        // The write lock is taken before anything is read, so that nobody can change what this
        // statement has read before it writes.
        store_.Cached("DELETE FROM " + prefix + "q_meta WHERE key = ''").Run();
    } catch (...) {
        Undo();
        throw;
    }
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
