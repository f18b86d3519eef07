#include "localdb/engine/DatabaseFile.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <functional>

#include "localdb/engine/MetaSchema.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/StorageCollations.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

[[noreturn]] void Fail(int result, const QString& path) {
    if ((result & 0xFF) == SQLITE_FULL) {
        throw SqlError(1105, {QString(), path, QStringLiteral("PRIMARY")});
    }
    throw SqlError(945, {path});
}

void Check(int result, const QString& path) {
    if (result != SQLITE_OK) Fail(result, path);
}

sqlite3* Open(const QString& path, int flags) {
    sqlite3* handle = nullptr;
    const int result =
        sqlite3_open_v2(path.toUtf8().constData(), &handle, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (result != SQLITE_OK) {
        sqlite3_close(handle);
        Fail(result, path);
    }
    sqlite3_busy_timeout(handle, 30'000);
    RegisterCollations(handle);
    return handle;
}

void Execute(sqlite3* handle, const char* sql, const QString& path) {
    Check(sqlite3_exec(handle, sql, nullptr, nullptr, nullptr), path);
}

// Runs one statement; `row` is called for each of its rows.
void Run(sqlite3* handle, const char* sql, const std::function<void(sqlite3_stmt*)>& bind,
         const std::function<void(sqlite3_stmt*)>& row) {
    sqlite3_stmt* statement = nullptr;
    const QString path = QString::fromUtf8(sqlite3_db_filename(handle, "main"));
    Check(sqlite3_prepare_v2(handle, sql, -1, &statement, nullptr), path);
    bind(statement);
    int result = SQLITE_ROW;
    while ((result = sqlite3_step(statement)) == SQLITE_ROW) row(statement);
    sqlite3_finalize(statement);
    if (result != SQLITE_DONE) Fail(result, path);
}

void Nothing(sqlite3_stmt*) {}

void BindText(sqlite3_stmt* statement, int index, const QString& text) {
    const std::string bytes = ToUtf8(text);
    sqlite3_bind_text64(statement, index, bytes.data(), bytes.size(), SQLITE_TRANSIENT,
                        SQLITE_UTF8);
}

QString ColumnText(sqlite3_stmt* statement, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    const auto size = static_cast<size_t>(sqlite3_column_bytes(statement, column));
    return text ? FromUtf8({text, size}) : QString();
}

class Handle {
  public:
    Handle(const QString& path, int flags) : handle_(Open(path, flags)) {}
    ~Handle() { sqlite3_close(handle_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    operator sqlite3*() const { return handle_; }

  private:
    sqlite3* handle_;
};

}  // namespace

namespace {

// The file's and its directory's content reach the disk.
void Flush(const QString& path) {
    for (const QString& name : {path, QFileInfo(path).path()}) {
        const int file = ::open(name.toUtf8().constData(), O_RDONLY | O_CLOEXEC);
        const bool flushed = file >= 0 && ::fsync(file) == 0;
        if (file >= 0) ::close(file);
        if (!flushed) Fail(SQLITE_IOERR, path);
    }
}

}  // namespace

// Nobody knows the file yet, so it is flushed once, when it is whole.
void DatabaseFile::Make(const QString& path, const QString& name) {
    {
        const Handle handle(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        Fill(handle, path, name);
    }
    Flush(path);
}

void DatabaseFile::Fill(sqlite3* handle, const QString& path, const QString& name) {
    Execute(handle, "PRAGMA synchronous=OFF", path);
    Execute(handle, "PRAGMA journal_mode=WAL", path);
    Execute(handle, "BEGIN", path);
    Execute(handle, MetaSchema, path);
    Execute(handle, MetaSchemaFrom1, path);
    const std::optional<int64_t> now = Moment::Now().Store(TypeKind::DateTime);
    Run(
        handle, "INSERT INTO q_meta VALUES ('created', ?1), ('name', ?2)",
        [&now, &name](sqlite3_stmt* statement) {
            sqlite3_bind_int64(statement, 1, now.value_or(0));
            BindText(statement, 2, name);
        },
        Nothing);
    Execute(handle, "COMMIT", path);
}

int64_t DatabaseFile::Created(const QString& path) {
    const Handle handle(path, SQLITE_OPEN_READWRITE);
    int64_t created = 0;
    Run(handle, "SELECT value FROM q_meta WHERE key = 'created'", Nothing,
        [&created](sqlite3_stmt* row) { created = sqlite3_column_int64(row, 0); });
    return created;
}

void DatabaseFile::Upgrade(const QString& path) {
    const Handle handle(path, SQLITE_OPEN_READWRITE);
    const auto format = [&handle] {
        int64_t found = 0;
        Run(handle, "SELECT value FROM q_meta WHERE key = 'format'", Nothing,
            [&found](sqlite3_stmt* row) { found = sqlite3_column_int64(row, 0); });
        return found;
    };
    if (format() != 1) return;
    // Another process may have been faster; what is not committed goes with the handle.
    Execute(handle, "BEGIN IMMEDIATE", path);
    if (format() == 1) Execute(handle, MetaSchemaFrom1, path);
    Execute(handle, "COMMIT", path);
}

void DatabaseFile::Remove(const QString& path) {
    for (const char* suffix : {"", "-wal", "-shm"}) QFile::remove(path + QLatin1String(suffix));
}

MasterFile::MasterFile(const QString& path) : handle_(Open(path, SQLITE_OPEN_READWRITE)) {}

MasterFile::~MasterFile() {
    sqlite3_close(handle_);
}

void MasterFile::MakeList() {
    Execute(handle_,
            "CREATE TABLE IF NOT EXISTS q_databases(id INTEGER PRIMARY KEY, name TEXT NOT NULL,"
            " file TEXT NOT NULL, created INTEGER NOT NULL);"
            "INSERT OR IGNORE INTO q_meta VALUES ('next_database', 5);",
            QStringLiteral("master"));
}

std::vector<DatabaseEntry> MasterFile::Load() {
    std::vector<DatabaseEntry> entries;
    Run(handle_, "SELECT id, name, file, created FROM q_databases", Nothing,
        [&entries](sqlite3_stmt* row) {
            entries.push_back({sqlite3_column_int(row, 0), ColumnText(row, 1), ColumnText(row, 2),
                               sqlite3_column_int64(row, 3)});
        });
    return entries;
}

int MasterFile::NextId() {
    int next = 5;  // 2 to 4 are the numbers of tempdb, model and msdb
    Run(handle_, "SELECT value FROM q_meta WHERE key = 'next_database'", Nothing,
        [&next](sqlite3_stmt* row) { next = sqlite3_column_int(row, 0); });
    return next;
}

void MasterFile::Add(const DatabaseEntry& entry, int nextId) {
    Execute(handle_, "BEGIN IMMEDIATE", entry.name);
    Run(
        handle_, "INSERT INTO q_databases VALUES (?1, ?2, ?3, ?4)",
        [&entry](sqlite3_stmt* statement) {
            sqlite3_bind_int(statement, 1, entry.id);
            BindText(statement, 2, entry.name);
            BindText(statement, 3, entry.path);
            sqlite3_bind_int64(statement, 4, entry.created);
        },
        Nothing);
    Run(
        handle_, "UPDATE q_meta SET value = ?1 WHERE key = 'next_database'",
        [nextId](sqlite3_stmt* statement) { sqlite3_bind_int(statement, 1, nextId); }, Nothing);
    Execute(handle_, "COMMIT", entry.name);
}

void MasterFile::Rename(int id, const QString& name) {
    Run(
        handle_, "UPDATE q_databases SET name = ?2 WHERE id = ?1",
        [id, &name](sqlite3_stmt* statement) {
            sqlite3_bind_int(statement, 1, id);
            BindText(statement, 2, name);
        },
        Nothing);
}

void MasterFile::Remove(int id) {
    Run(
        handle_, "DELETE FROM q_databases WHERE id = ?1",
        [id](sqlite3_stmt* statement) { sqlite3_bind_int(statement, 1, id); }, Nothing);
}

}  // namespace quarv::localdb::engine
