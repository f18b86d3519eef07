// CatalogueCache: what one session knows of the objects and tables of its databases, each database
// as of one version of its catalogue. Every change of a catalogue gives it a new version, which
// lies in the database and is committed or rolled back with the change; so nothing is given out
// that the running statement would not read by itself. Bounded in bytes: what would be too much
// starts anew. Owned by the Store; filled by Metadata.
#pragma once

#include <QHashFunctions>
#include <map>
#include <memory>
#include <unordered_map>

#include "localdb/engine/ObjectInfo.h"

namespace quarv::localdb::engine {

class Store;

class CatalogueCache {
  public:
    static constexpr size_t MostBytes = size_t{1024} * 1024;  // of all that is known, estimated

    using Object = std::shared_ptr<const ObjectInfo>;
    // With its constraints; the last identity value is not kept.
    using Table = std::shared_ptr<const TableInfo>;

    // One statement that sees one state of every database for as long as it lives. Inside a
    // transaction the next one sees the same; whoever ends a transaction calls DoubtAll.
    class Statement;

    bool InStatement() const { return depth_ > 0; }
    // True where what is known of the database can be used: its version was looked up since the
    // statement or its transaction began and since the last change.
    bool IsChecked(int databaseId) const;
    // The database's catalogue has this version now; what is known of another one is forgotten.
    void Check(int databaseId, int64_t version);
    // This session changed the catalogue, or rolled changes back.
    void Doubt(int databaseId);
    void DoubtAll();

    // Of a database that is checked; nothing where it is not known. `key` tells names apart.
    Object FindObject(int databaseId, const QString& key) const;
    Table FindTable(int databaseId, int64_t objectId) const;
    void Keep(int databaseId, const QString& key, Object object);
    void Keep(int databaseId, Table table);

    // A number that no version of any catalogue has.
    static int64_t NewVersion();

  private:
    struct Database {
        int64_t version = 0;  // 0: the catalogue was never changed
        bool checked = false;
        size_t bytes = 0;
        std::unordered_map<QString, Object> objects;
        std::unordered_map<int64_t, Table> tables;
    };

    Database& MakeRoom(int databaseId, size_t bytes);
    void Forget(Database& database);

    std::map<int, Database> databases_;
    size_t bytes_ = 0;
    int depth_ = 0;  // of statements inside one another
};

class CatalogueCache::Statement {
  public:
    explicit Statement(Store& store);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

  private:
    void DoubtOutsideTransaction();

    const Store& store_;
    CatalogueCache& cache_;
};

}  // namespace quarv::localdb::engine
