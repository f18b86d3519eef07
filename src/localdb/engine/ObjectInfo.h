// ObjectInfo, ColumnInfo, IndexInfo, TableInfo, ParameterInfo: what the catalogue of a database
// knows about one object. Plain values, read by Metadata.
#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "localdb/engine/SqlType.h"

namespace quarv::localdb::engine {

struct ObjectInfo {
    int64_t id = 0;
    int schemaId = 1;
    QString schema;  // "dbo"
    QString type;    // "U", "V", "P", "PK", "UQ", "F", "C", "D"
    QString name;
    int64_t created = 0;       // as datetime
    QString definition;        // of views and procedures the source, else the expression
    bool systemNamed = false;  // a constraint that was written without a name
    int maxColumn = 0;         // the highest column number that was ever given; of new tables 0
    bool schemaBound = false;
};

struct ColumnInfo {
    int id = 0;  // 1-based, never used twice in a table
    QString name;
    SqlType type;
    bool nullable = true;
    bool isSysname = false;
    bool identity = false;
    int64_t defaultId = 0;
    QString defaultText;  // empty: none
    QString defaultName;  // of the constraint; empty: none
    bool defaultSystemNamed = false;
    int userType = 0;        // the alias type that it was declared with; 0: none
    QString userTypeName;    // of that type
    QString computedText;    // of a computed column the expression; empty: an ordinary column
    bool persisted = false;  // declared so
    bool stored = true;      // a computed column may have no place in the storage table
    bool rowGuid = false;

    bool IsComputed() const { return !computedText.isEmpty(); }
    std::string StorageName() const { return "c" + std::to_string(id); }
};

struct IndexInfo {
    static constexpr int64_t NewConstraint = -1;
    struct Key {
        int columnId = 0;
        bool descending = false;
    };
    int id = 0;  // 1 is the clustered one
    QString name;
    bool unique = false;
    bool clustered = false;
    int64_t constraintId = 0;  // 0: no constraint; NewConstraint until it has a number
    bool systemNamed = false;
    bool primary = false;     // of a PRIMARY KEY constraint
    bool storageKey = false;  // the storage table has no other key
    std::vector<Key> keys;
    std::vector<int> included;  // columns
    QString filter;             // a condition; empty: none
};

struct CheckInfo {
    int64_t id = 0;
    QString name;
    QString text;
    int columnId = 0;  // 0: the table's
    bool disabled = false;
    bool trusted = true;  // all rows are known to keep it
    bool systemNamed = false;
};

struct ForeignKeyInfo {
    enum class Action : uint8_t { NoAction, Cascade, SetNull, SetDefault };
    struct Column {
        int columnId = 0;
        int referencedId = 0;
    };
    int64_t id = 0;
    QString name;
    int64_t tableId = 0;
    int64_t referencedTable = 0;
    int keyIndex = 0;  // the index of the referenced table that it refers to
    Action onDelete = Action::NoAction;
    Action onUpdate = Action::NoAction;
    bool disabled = false;
    bool trusted = true;
    bool systemNamed = false;
    std::vector<Column> columns;

    bool IsWithinTable() const { return tableId == referencedTable; }
};

struct IdentityInfo {
    int columnId = 0;
    int64_t seed = 1;
    int64_t increment = 1;
    std::optional<int64_t> last;  // the last value handed out
};

struct TableInfo {
    ObjectInfo object;
    std::vector<ColumnInfo> columns;
    std::vector<IndexInfo> indexes;
    std::optional<IdentityInfo> identity;
    // To be relied on behind Metadata::LoadConstraints alone.
    std::vector<CheckInfo> checks;
    std::vector<ForeignKeyInfo> foreignKeys;  // this table's
    std::vector<ForeignKeyInfo> references;   // of tables that refer to this one, itself included

    const ColumnInfo* FindColumn(const QString& name) const;
    const ColumnInfo* FindColumn(int id) const;
    const IndexInfo* FindIndex(const QString& name) const;
    const IndexInfo* Clustered() const;
    // The index whose order the rows are stored in; nothing where they have row numbers.
    const IndexInfo* StorageKey() const;
    // The place of a column in `columns`, which must be there.
    size_t PlaceOf(int columnId) const;
    std::string StorageName() const { return "t" + std::to_string(object.id); }
};

struct ParameterInfo {
    QString name;  // with its "@"
    SqlType type;
    int userType = 0;  // an alias type; 0: none
    bool output = false;
    std::optional<QString> defaultText;  // as DefaultText writes it
};

// What CREATE TYPE ... FROM makes: a name for a type, with its nullability.
struct AliasType {
    int userType = 0;  // 257 and on
    int schemaId = 1;
    QString schema;
    QString name;
    SqlType type;
    bool nullable = true;
    bool isSysname = false;  // its base was written as sysname
};

// Whether two names are the same name.
bool SameName(const QString& a, const QString& b);

}  // namespace quarv::localdb::engine
