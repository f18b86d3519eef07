#include "localdb/engine/TableStorage.h"

#include <algorithm>

#include "localdb/engine/Conversion.h"
#include "localdb/engine/SqlError.h"
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

void TableStorage::Create(const TableInfo& table) {
    const IndexInfo* clustered = table.Clustered();
    const bool keyed = clustered && IsStorageKey(table, *clustered);
    std::string sql = "CREATE TABLE " + prefix_ + table.StorageName() + "(";
    for (const ColumnInfo& column : table.columns) {
        if (&column != &table.columns.front()) sql += ", ";
        sql += ColumnSql(column);
    }
    if (keyed) sql += ", PRIMARY KEY(" + KeyList(*clustered) + ")";
    sql += ')';
    // A single ascending integer key is the storage's own row number.
    const bool rowNumber =
        keyed && clustered->keys.size() == 1 && !clustered->keys.front().descending &&
        std::string_view(StoredClass(table.FindColumn(clustered->keys.front().columnId)->type)) ==
            "INTEGER";
    if (keyed && !rowNumber) sql += " WITHOUT ROWID";
    store_.Run(sql);
    for (const IndexInfo& index : table.indexes) {
        if (!keyed || &index != clustered) CreateIndex(table, index);
    }
}

void TableStorage::CreateIndex(const TableInfo& table, const IndexInfo& index) {
    const std::string unique = index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
    const std::string sql = unique + prefix_ + IndexName(table, index) + " ON " +
                            table.StorageName() + "(" + KeyList(index) + ")";
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
               table.StorageName() + "(" + keys + ") WHERE " + condition);
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

const IndexInfo* TableStorage::StorageKey(const TableInfo& table) {
    const IndexInfo* clustered = table.Clustered();
    return clustered && IsStorageKey(table, *clustered) ? clustered : nullptr;
}

std::string TableStorage::InsertSql(const TableInfo& table, bool numbered) const {
    std::string columns, values;
    int number = 0;
    for (const ColumnInfo& column : table.columns) {
        columns += (number ? ", " : "") + column.StorageName();
        values += (number ? ", ?" : "?") + std::to_string(number + 1);
        ++number;
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
