// DatabaseFile: making, reading and removing the file of a database from outside any session, and
// the list of databases that master's file holds.
#pragma once

#include <QString>
#include <vector>

#include "localdb/engine/DatabaseList.h"

struct sqlite3;

namespace quarv::localdb::engine {

class DatabaseFile {
  public:
    // A new file with the meta tables of an empty database, mode 0600. Raises SqlError 945 or 1105.
    static void Make(const QString& path, const QString& name);
    // When it was made, as datetime. Raises SqlError 945.
    static int64_t Created(const QString& path);
    // Brings a file of an older format to the present one, whole or not at all. Raises SqlError 945
    // or 1105; a file of a newer format is left alone.
    static void Upgrade(const QString& path);
    // The file and what the library keeps beside it. A missing file is no error.
    static void Remove(const QString& path);

  private:
    static void Fill(sqlite3* handle, const QString& path, const QString& name);
};

class MasterFile {
  public:
    // Raises SqlError 945.
    explicit MasterFile(const QString& path);
    ~MasterFile();
    MasterFile(const MasterFile&) = delete;
    MasterFile& operator=(const MasterFile&) = delete;

    void MakeList();
    std::vector<DatabaseEntry> Load();
    int NextId();
    void Add(const DatabaseEntry& entry, int nextId);
    void Remove(int id);
    void Rename(int id, const QString& name);

  private:
    sqlite3* handle_ = nullptr;
};

}  // namespace quarv::localdb::engine
