#include "localdb/engine/Store.h"

#include <sqlite3.h>

#include <chrono>
#include <thread>

#include "localdb/engine/MetaSchema.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlFunctions.h"
#include "localdb/engine/StorageCollations.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

constexpr int MaxAttached = 8;         // the library takes ten
constexpr int ProgressSteps = 20'000;  // of its virtual machine, between two questions
constexpr auto BusyPause = std::chrono::milliseconds(2);
constexpr int BusyCalls = 15'000;  // times the pause: half a minute

std::string SchemaName(int databaseId) {
    return "d" + std::to_string(databaseId);
}

}  // namespace

Store::Store() {
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY |
                      SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(":memory:", &handle_, flags, nullptr) != SQLITE_OK) {
        sqlite3_close_v2(handle_);
        throw SqlError(945, {QString()});
    }
    sqlite3_extended_result_codes(handle_, 1);
    sqlite3_progress_handler(handle_, ProgressSteps, OnProgress, this);
    sqlite3_busy_handler(handle_, OnBusy, this);
    RegisterCollations(handle_);
    RegisterSqlFunctions(*this);
    // A file from outside must not run code through its schema.
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_limit(handle_, SQLITE_LIMIT_LENGTH, 1'000'000'000);
}

Store::~Store() {
    cache_.clear();
    pool_.Clear();
    sqlite3_close_v2(handle_);
}

std::string Store::Attach(const DatabaseEntry& database) {
    if (database.id == DatabaseList::TemporaryId) return AttachTemporary();
    const std::string name = SchemaName(database.id);
    for (auto entry = attached_.begin(); entry != attached_.end(); ++entry) {
        if (entry->id != database.id) continue;
        attached_.splice(attached_.begin(), attached_, entry);
        return name;
    }
    if (attached_.size() >= MaxAttached) DetachOldest();
    try {
        // "rw": a file that is missing is an error, not a new file.
        const QByteArray path =
            QByteArray("file:") + database.path.toUtf8().toPercentEncoding("/") + "?mode=rw";
        Prepare("ATTACH ? AS " + name).Bind(1, std::string_view(path.data(), path.size())).Run();
        attached_.push_front(database);
        if (!InTransaction()) {
            // Inside a transaction the file's own mode and the library's default, FULL, hold.
            Run("PRAGMA " + name + ".journal_mode=WAL");
            Run("PRAGMA " + name + ".synchronous=FULL");
        }
        Run("PRAGMA " + name + ".cache_size=-8000");
        CheckFormat(name);
    } catch (const SqlError& error) {
        if (!attached_.empty() && attached_.front().id == database.id) attached_.pop_front();
        sqlite3_exec(handle_, ("DETACH " + name).c_str(), nullptr, nullptr, nullptr);
        if (error.Number() == 1222 || error.Number() == 1105) throw;
        throw SqlError(945, {database.name});
    }
    return name;
}

// A file without a name, which nobody else sees and which goes with the connection. What a rollback
// took away of its catalogue is made anew.
std::string Store::AttachTemporary() {
    const std::string name = SchemaName(DatabaseList::TemporaryId);
    if (!temporaryAttached_) {
        Run("ATTACH '' AS " + name);
        temporaryAttached_ = true;
        if (!InTransaction()) Run("PRAGMA " + name + ".synchronous=OFF");
    }
    SqliteStatement& made =
        Cached("SELECT 1 FROM " + name + ".sqlite_master WHERE name = 'q_meta'");
    const bool exists = made.Step();
    made.Reset();
    if (exists) return name;
    std::string script = std::string(MetaSchema) + MetaSchemaFrom1;
    for (const char* word :
         {"TABLE q_", "INTO q_", "INDEX q_", "UPDATE q_", "FROM q_", "JOIN q_"}) {
        const std::string_view found(word);
        for (size_t at = 0; (at = script.find(found, at)) != std::string::npos;
             at += found.size() + name.size()) {
            script.insert(at + found.size() - 2, name + '.');
        }
    }
    const int result = sqlite3_exec(handle_, script.c_str(), nullptr, nullptr, nullptr);
    if (result != SQLITE_OK) Raise(result);
    return name;
}

void Store::DropTemporary() {
    if (!temporaryAttached_) return;
    const std::string name = SchemaName(DatabaseList::TemporaryId);
    ForgetStatements(name + ".");
    Run("DETACH " + name);
    temporaryAttached_ = false;
}

// Raises where the file is none of this server's, or in a format of another version.
void Store::CheckFormat(const std::string& schema) {
    SqliteStatement row = Prepare("SELECT value FROM " + schema + ".q_meta WHERE key = 'format'");
    if (!row.Step() || row.Integer(0) != MetaFormat) throw SqlError(945);
}

void Store::Detach(int databaseId) {
    const auto entry = std::find_if(attached_.begin(), attached_.end(),
                                    [databaseId](const auto& e) { return e.id == databaseId; });
    if (entry == attached_.end()) return;
    ForgetStatements(SchemaName(databaseId) + ".");
    Run("DETACH " + SchemaName(databaseId));
    attached_.erase(entry);
}

// Inside a transaction only those can go that it has not touched.
void Store::DetachOldest() {
    const std::list<DatabaseEntry> candidates(attached_.rbegin(), attached_.rend());
    for (const DatabaseEntry& entry : candidates) {
        try {
            Detach(entry.id);
            return;
        } catch (const SqlError&) {
        }
    }
}

void Store::ForgetStatements(const std::string& prefix) {
    std::erase_if(cache_, [&prefix](const auto& entry) {
        return entry.first.find(prefix) != std::string::npos;
    });
    pool_.Forget(prefix);
}

SqliteStatement& Store::Cached(const std::string& sql) {
    auto found = cache_.find(sql);
    if (found == cache_.end()) found = cache_.emplace(sql, SqliteStatement(*this, sql)).first;
    found->second.Reset();
    sqlite3_clear_bindings(found->second.Handle());
    return found->second;
}

int Store::OnProgress(void* self) {
    auto& store = *static_cast<Store*>(self);
    return store.stoppable_ && store.cancelled_ && store.cancelled_() ? 1 : 0;
}

int Store::OnBusy(void* self, int calls) {
    auto& store = *static_cast<Store*>(self);
    const int64_t waited = calls * int64_t{BusyPause.count()};
    const bool over = store.lockTimeout_ >= 0 ? waited >= store.lockTimeout_ : calls >= BusyCalls;
    if (over || (store.cancelled_ && store.cancelled_())) return 0;
    std::this_thread::sleep_for(BusyPause);
    return 1;
}

void Store::Raise(int result) {
    if (error_) std::rethrow_exception(std::exchange(error_, nullptr));
    if (cancelled_ && cancelled_()) throw Cancelled();
    switch (result & 0xFF) {
        case SQLITE_INTERRUPT:
            throw Cancelled();
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            throw SqlError(1222);
        case SQLITE_FULL:
            throw SqlError(1105, {QString(), QString(), QStringLiteral("PRIMARY")});
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        case SQLITE_CANTOPEN:
        case SQLITE_IOERR:
        case SQLITE_READONLY:
        case SQLITE_PERM:
            throw SqlError(945, {QString()});
        case SQLITE_NOMEM:
            throw std::bad_alloc();
        case SQLITE_TOOBIG:
            throw SqlError(8623);
        case SQLITE_CONSTRAINT:
            throw DuplicateKey{sqlite3_errmsg(handle_)};
        default: {
            // The library bounds the height and the nesting of what it reads.
            const std::string_view text = sqlite3_errmsg(handle_);
            for (const char* limit : {"too large", "too many", "stack overflow"}) {
                if (text.find(limit) != std::string_view::npos) throw SqlError(8623);
            }
            Message message;
            message.number = 50000;
            message.severity = 16;
            message.text = QString::fromUtf8(sqlite3_errmsg(handle_));
            throw SqlError(message);
        }
    }
}

bool Store::InTransaction() const {
    return sqlite3_get_autocommit(handle_) == 0;
}

}  // namespace quarv::localdb::engine
