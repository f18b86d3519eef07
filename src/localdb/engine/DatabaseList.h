// DatabaseList: the databases of the server: which exist, in which files, and who uses them. Kept
// in database "master". Shared by all sessions; any thread.
#pragma once

#include <QString>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace quarv::localdb::engine {

struct DatabaseEntry {
    int id = 0;  // 1 is master; never used twice
    QString name;
    QString path;         // of its file
    int64_t created = 0;  // as datetime
};

class DatabaseList {
  public:
    static constexpr int MasterId = 1;
    static constexpr int TemporaryId = 2;

    // "tempdb", of which every session has its own.
    static const DatabaseEntry& Temporary();

    // Reads the list in `directory`, making it and "master" where they are missing. Raises
    // SqlError.
    explicit DatabaseList(const QString& directory);

    std::optional<DatabaseEntry> Find(const QString& name) const;
    std::optional<DatabaseEntry> Find(int id) const;
    // By name.
    std::vector<DatabaseEntry> All() const;

    // Makes an empty database. Raises SqlError 1801 and whatever the files raise.
    DatabaseEntry Create(const QString& name);
    // Raises SqlError 3701, 3702 (in use) or 3708 (master).
    void Drop(const QString& name);
    // Its file keeps its own name. `currentId` is the caller's current database, which is in use by
    // the caller at least. Raises SqlError 1801, 3708, 5011 or 5030 (in use by others).
    DatabaseEntry Rename(const QString& name, const QString& newName, int currentId);

    // Marks the database as some session's current one. Raises SqlError 911.
    DatabaseEntry Acquire(const QString& name);
    void Release(int id);

  private:
    static QString Key(const QString& name) { return name.toCaseFolded(); }
    QString PathFor(int id, const QString& name) const;

    const QString directory_;
    mutable std::mutex mutex_;
    std::map<QString, DatabaseEntry> byName_;
    std::map<int, int> users_;
    int nextId_ = 0;
};

}  // namespace quarv::localdb::engine
