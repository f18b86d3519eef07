// Metadata: one database's catalogue through one session's store: finding objects and reading and
// changing what is known about them. Cheap to make; borrows the store. What it finds inside a
// statement it keeps in the store's CatalogueCache. Every change gives the catalogue a new version,
// so whatever writes to the tables of a catalogue has to do it here, by Cached.
#pragma once

#include <optional>

#include "localdb/engine/ObjectInfo.h"
#include "localdb/engine/Store.h"

namespace quarv::localdb::engine {

class Metadata {
  public:
    static constexpr int DboSchema = 1;
    static constexpr int FirstUserSchema = 5;
    // guest, INFORMATION_SCHEMA and sys, which nothing is made in or moved to.
    static constexpr bool IsSystemSchema(int id) { return id > DboSchema && id < FirstUserSchema; }

    Metadata(Store& store, const DatabaseEntry& database);

    const DatabaseEntry& Database() const { return database_; }
    // "d5."; goes before every storage name of this database.
    const std::string& Prefix() const { return prefix_; }

    // Empty `schema` means dbo. Nothing where there is no such object.
    std::optional<ObjectInfo> Find(const QString& schema, const QString& name);
    std::optional<ObjectInfo> Find(int64_t objectId);
    // Nothing where there is no such schema; empty means dbo.
    std::optional<int> FindSchema(const QString& schema);
    // Null where there is no such schema.
    QString SchemaName(int64_t schemaId);
    // Whether an object of that type belongs to the parent.
    bool HasChild(int64_t parentId, const QString& type);
    TableInfo LoadTable(const ObjectInfo& object);
    // The checks and foreign keys of a table and those that refer to it.
    void LoadConstraints(TableInfo& table);
    // Every foreign key of the database.
    std::vector<ForeignKeyInfo> AllForeignKeys();
    std::vector<ParameterInfo> LoadParameters(int64_t objectId);

    // Each runs inside the caller's transaction.
    // Gives the object its id. Raises SqlError 2714 where the name is taken.
    int64_t AddObject(ObjectInfo object, int64_t parentId = 0);
    void AddColumn(int64_t objectId, const ColumnInfo& column);
    void AddIndex(int64_t objectId, const IndexInfo& index);
    void AddIdentity(int64_t objectId, const IdentityInfo& identity);
    void AddParameter(int64_t objectId, int number, const ParameterInfo& parameter);
    void AddCheck(int64_t tableId, const CheckInfo& check);
    void AddForeignKey(const ForeignKeyInfo& key);
    // `object` is a check or a foreign key.
    void SetConstraintState(int64_t objectId, bool disabled, bool trusted);
    // A constraint of any kind, without the index behind it.
    void RemoveConstraint(int64_t objectId);
    void UpdateColumn(int64_t objectId, const ColumnInfo& column);
    void RemoveColumn(int64_t objectId, int columnId);
    // Of a table's indexes, whether it gives the rows their order in the storage.
    void SetStorageKey(int64_t objectId, int indexId, bool is);
    void RenameObject(int64_t objectId, const QString& name);
    void RenameIndex(int64_t objectId, int indexId, const QString& name);
    // A view's or a procedure's new source; its columns or parameters go.
    void Redefine(int64_t objectId, const QString& source, bool schemaBound);
    // It was changed now.
    void Touch(int64_t objectId);
    void SetLastIdentity(int64_t objectId, int64_t last);
    // The next identity value is the seed again.
    void ResetIdentity(int64_t objectId);
    void RemoveIndex(int64_t objectId, int indexId);
    // The object, what belongs to it and its constraints; not its storage.
    void RemoveObject(int64_t objectId);

    // Schemas and alias types. Raises SqlError 2714 where the name is taken.
    int AddSchema(const QString& name);
    void RemoveSchema(int schemaId);
    // Those with objects of the type, by name.
    std::vector<int> SchemasWith(const QString& type);
    // The name of an object or a type in it; null where there is none.
    QString FirstInSchema(int schemaId);
    std::optional<AliasType> FindType(const QString& schema, const QString& name);
    std::optional<AliasType> FindType(int userType);
    // By name.
    std::vector<AliasType> AllTypes();
    // The number of `type` is given here.
    void AddType(const AliasType& type);
    void RemoveType(int userType);
    void MoveType(int userType, int schemaId);
    // The name of an object with a column or a parameter of the type; null where there is none.
    QString FirstWithType(int userType);

    // Whether the object belongs to another, as a constraint does.
    bool IsChild(int64_t objectId);
    // The object's or its constraint's name that the schema has already; null where it has none.
    QString NameTakenBy(int64_t objectId, int schemaId);
    // Takes its constraints along.
    void MoveObject(int64_t objectId, int schemaId);

    // The next number for a rowversion column of this database.
    int64_t NextRowVersion();
    // The last that was given, 2000 before the first.
    int64_t LastRowVersion();
    // A new object's id.
    int64_t NextObjectId();

  private:
    // What changes the catalogue is bound and run at once, with nothing looked up in between.
    SqliteStatement& Cached(const char* sql);
    // What changes numbers that are not kept: ids, identity values, row versions.
    SqliteStatement& Counter(const char* sql);
    // Whether what is known of the database can be used now.
    bool KnowsCatalogue();
    TableInfo ReadTable(const ObjectInfo& object);
    void ReadConstraints(TableInfo& table);
    std::vector<ColumnInfo> LoadColumns(int64_t objectId);
    std::vector<IndexInfo> LoadIndexes(int64_t objectId);
    std::optional<IdentityInfo> LoadIdentity(int64_t objectId);
    std::optional<ObjectInfo> FindTemporary(const QString& name);
    std::vector<ForeignKeyInfo> LoadForeignKeys(const char* sql, int64_t tableId);
    // Counts up what q_meta keeps under the key and gives the value before.
    int64_t TakeNumber(const char* sql);
    static ObjectInfo ReadObject(const SqliteStatement& row);

    Store& store_;
    DatabaseEntry database_;
    std::string prefix_;
};

}  // namespace quarv::localdb::engine
