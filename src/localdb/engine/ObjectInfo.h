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
    QString type;    // "U", "V", "P", "PK", "UQ", "D"
    QString name;
    int64_t created = 0;  // as datetime
    QString definition;   // of views and procedures: the source; of defaults: the expression
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

    std::string StorageName() const { return "c" + std::to_string(id); }
};

struct IndexInfo {
    struct Key {
        int columnId = 0;
        bool descending = false;
    };
    int id = 0;  // 1 is the clustered one
    QString name;
    bool unique = false;
    bool clustered = false;
    int64_t constraintId = 0;
    bool primary = false;  // of a PRIMARY KEY constraint
    std::vector<Key> keys;
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

    const ColumnInfo* FindColumn(const QString& name) const;
    const ColumnInfo* FindColumn(int id) const;
    const IndexInfo* Clustered() const;
    std::string StorageName() const { return "t" + std::to_string(object.id); }
};

struct ParameterInfo {
    QString name;  // with its "@"
    SqlType type;
    bool output = false;
    std::optional<QString> defaultText;  // as DefaultText writes it
};

// Whether two names are the same name.
bool SameName(const QString& a, const QString& b);

}  // namespace quarv::localdb::engine
