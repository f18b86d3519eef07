#include "localdb/engine/TableStorage.h"

#include <algorithm>

#include "localdb/engine/Conversion.h"
#include "localdb/engine/IndexFilter.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

std::string IndexName(const TableInfo& table, const IndexInfo& index) {
    return "i" + std::to_string(table.object.id) + "_" + std::to_string(index.id);
}

// Of the index that keeps nulls apart.
std::string GuardName(const TableInfo& table, const IndexInfo& index) {
    return "n" + std::to_string(table.object.id) + "_" + std::to_string(index.id);
}

bool HasNullableKey(const TableInfo& table, const IndexInfo& index) {
    return std::any_of(index.keys.begin(), index.keys.end(), [&table](const IndexInfo::Key& key) {
        return table.FindColumn(key.columnId)->nullable;
    });
}

std::string FilterSql(const TableInfo& table, const IndexInfo& index) {
    return index.filter.isEmpty() ? "" : " WHERE " + IndexFilter::Sql(table, index.filter);
}

std::string ColumnSql(const ColumnInfo& column) {
    std::string sql = column.StorageName() + ' ' + StoredClass(column.type);
    const char* collation = StorageCollation(column.type);
    if (collation) sql += std::string(" COLLATE ") + collation;
    return sql;
}

}  // namespace

bool TableStorage::IsStorageKey(const TableInfo& table, const IndexInfo& index) {
    return index.clustered && index.unique && !HasNullableKey(table, index);
}

std::string TableStorage::KeyList(const IndexInfo& index) {
    std::string list;
    for (const IndexInfo::Key& key : index.keys) {
        list += (list.empty() ? "c" : ", c") + std::to_string(key.columnId);
        if (key.descending) list += " DESC";
    }
    return list;
}

void TableStorage::CreateTable(TableInfo& table, const std::string& name) {
    const IndexInfo* clustered = table.Clustered();
    const bool keyed = clustered && IsStorageKey(table, *clustered);
    std::string sql;
    for (const ColumnInfo& column : table.columns) {
        if (column.stored) sql += (sql.empty() ? "" : ", ") + ColumnSql(column);
    }
    if (keyed) sql += ", PRIMARY KEY(" + KeyList(*clustered) + ")";
    sql = "CREATE TABLE " + prefix_ + name + "(" + sql + ')';
    for (IndexInfo& index : table.indexes) index.storageKey = keyed && &index == clustered;
    // A single ascending integer key is the storage's own row number.
    const bool rowNumber =
        keyed && clustered->keys.size() == 1 && !clustered->keys.front().descending &&
        std::string_view(StoredClass(table.FindColumn(clustered->keys.front().columnId)->type)) ==
            "INTEGER";
    if (keyed && !rowNumber) sql += " WITHOUT ROWID";
    store_.Run(sql);
}

void TableStorage::Create(TableInfo& table) {
    CreateTable(table, table.StorageName());
    for (const IndexInfo& index : table.indexes) {
        if (!index.storageKey) CreateIndex(table, index);
    }
}

void TableStorage::Rebuild(const TableInfo& before, TableInfo& after, SqlWriter& expressions) {
    const std::string name = after.StorageName() + "_new";
    CreateTable(after, name);
    std::string columns;
    for (const ColumnInfo& column : after.columns) {
        if (column.stored) columns += (columns.empty() ? "" : ", ") + column.StorageName();
    }
    try {
        SqlWriter& writer = expressions;
        writer.Prepend("INSERT INTO " + prefix_ + name + "(" + columns + ") SELECT ");
        writer.Text(" FROM " + prefix_ + before.StorageName());
        writer.Prepare(store_).Run();
    } catch (const DuplicateKey&) {
        RaiseDuplicate(before, *after.StorageKey());
    }
    Drop(before);
    store_.Run("ALTER TABLE " + prefix_ + name + " RENAME TO " + after.StorageName());
    for (const IndexInfo& index : after.indexes) {
        if (!index.storageKey) CreateIndex(after, index);
    }
}

void TableStorage::AddColumn(const TableInfo& table, const ColumnInfo& column) {
    if (!column.stored) return;
    store_.Run("ALTER TABLE " + prefix_ + table.StorageName() + " ADD COLUMN " + ColumnSql(column));
}

void TableStorage::DropColumn(const TableInfo& table, const ColumnInfo& column) {
    if (!column.stored) return;
    store_.Run("ALTER TABLE " + prefix_ + table.StorageName() + " DROP COLUMN " +
               column.StorageName());
}

std::vector<std::string> TableStorage::RowIdentity(const TableInfo& table) {
    std::vector<std::string> columns;
    if (const IndexInfo* key = table.StorageKey()) {
        for (const IndexInfo::Key& part : key->keys) {
            columns.push_back('c' + std::to_string(part.columnId));
        }
    } else {
        columns.emplace_back("rowid");
    }
    return columns;
}

std::vector<SqlType> TableStorage::RowIdentityTypes(const TableInfo& table) {
    std::vector<SqlType> types;
    if (const IndexInfo* key = table.StorageKey()) {
        for (const IndexInfo::Key& part : key->keys) {
            types.push_back(table.FindColumn(part.columnId)->type);
        }
    } else {
        types.push_back(MakeType(TypeKind::BigInt));
    }
    return types;
}

void TableStorage::CreateIndex(const TableInfo& table, const IndexInfo& index) {
    const std::string unique = index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
    const std::string sql = unique + prefix_ + IndexName(table, index) + " ON " +
                            table.StorageName() + "(" + KeyList(index) + ")" +
                            FilterSql(table, index);
    try {
        store_.Run(sql);
        if (index.unique && HasNullableKey(table, index)) CreateNullGuard(table, index);
    } catch (const DuplicateKey&) {
        RaiseDuplicate(table, index);
    }
}

// The storage takes nulls for different from each other; a unique index here takes them for equal.
void TableStorage::CreateNullGuard(const TableInfo& table, const IndexInfo& index) {
    std::string keys, condition;
    for (const IndexInfo::Key& key : index.keys) {
        const ColumnInfo& column = *table.FindColumn(key.columnId);
        const std::string name = column.StorageName();
        if (!keys.empty()) keys += ", ";
        keys += "(" + name + " IS NULL), ifnull(" + name + ", 0)";
        const char* collation = StorageCollation(column.type);
        if (collation) keys += std::string(" COLLATE ") + collation;
        condition += (condition.empty() ? "" : " OR ") + name + " IS NULL";
    }
    store_.Run("CREATE UNIQUE INDEX " + prefix_ + GuardName(table, index) + " ON " +
               table.StorageName() + "(" + keys + ") WHERE (" + condition + ")" +
               (index.filter.isEmpty() ? "" : " AND " + IndexFilter::Sql(table, index.filter)));
}

void TableStorage::RaiseDuplicate(const TableInfo& table, const IndexInfo& index) {
    std::string columns;
    for (const IndexInfo::Key& key : index.keys) {
        columns += (columns.empty() ? "c" : ", c") + std::to_string(key.columnId);
    }
    SqliteStatement row =
        store_.Prepare("SELECT " + columns + " FROM " + prefix_ + table.StorageName() +
                       " GROUP BY " + columns + " HAVING count(*) > 1 LIMIT 1");
    QStringList values;
    if (row.Step()) {
        for (size_t i = 0; i < index.keys.size(); ++i) {
            const SqlType& type = table.FindColumn(index.keys[i].columnId)->type;
            values += Conversion::ToMessageText(ReadColumn(row.Handle(), static_cast<int>(i), type),
                                                type);
        }
    }
    throw SqlError(1505, {table.object.schema + u'.' + table.object.name, index.name,
                          values.join(QStringLiteral(", "))});
}

void TableStorage::DropIndex(const TableInfo& table, const IndexInfo& index) {
    store_.Run("DROP INDEX IF EXISTS " + prefix_ + IndexName(table, index));
    store_.Run("DROP INDEX IF EXISTS " + prefix_ + GuardName(table, index));
}

void TableStorage::Drop(const TableInfo& table) {
    store_.Run("DROP TABLE " + prefix_ + table.StorageName());
}

std::string TableStorage::InsertSql(const TableInfo& table, bool numbered) const {
    std::string columns, values;
    int number = 0;
    for (const ColumnInfo& column : table.columns) {
        ++number;
        if (!column.stored) continue;
        columns += (columns.empty() ? "" : ", ") + column.StorageName();
        values += (values.empty() ? "?" : ", ?") + std::to_string(number);
    }
    if (numbered) {
        columns += ", rowid";
        values += ", ?" + std::to_string(number + 1);
    }
    return "INSERT INTO " + prefix_ + table.StorageName() + "(" + columns + ") VALUES (" + values +
           ")";
}

// "UNIQUE constraint failed: t1.c1, t1.c2" names the columns, "... index 'n1_2'" an index.
const IndexInfo* TableStorage::FindViolated(const TableInfo& table,
                                            const std::string& libraryError) {
    for (const IndexInfo& index : table.indexes) {
        if (libraryError.find('\'' + GuardName(table, index) + '\'') != std::string::npos) {
            return &index;
        }
        std::string columns;
        for (const IndexInfo::Key& key : index.keys) {
            columns += (columns.empty() ? "" : ", ") + table.StorageName() + ".c" +
                       std::to_string(key.columnId);
        }
        if (index.unique && libraryError.ends_with(": " + columns)) return &index;
    }
    return nullptr;
}

}  // namespace quarv::localdb::engine
