#include "localdb/engine/RowWriter.h"

#include "localdb/engine/TableStorage.h"

namespace quarv::localdb::engine {

RowWriter::RowWriter(Store& store, const Metadata& metadata, const TableInfo& table)
    : table_(table),
      checker_(metadata, table, QStringLiteral("UPDATE")),
      types_(TableStorage::RowIdentityTypes(table)) {
    const std::string name = metadata.Prefix() + table.StorageName();
    std::string columns, condition;
    int number = 0;
    for (const ColumnInfo& column : table.columns) {
        if (!column.stored) continue;
        columns += (columns.empty() ? "" : ", ") + column.StorageName() + " = ?" +
                   std::to_string(++number);
    }
    const auto where = [&table](int first) {
        std::string sql;
        for (const std::string& column : TableStorage::RowIdentity(table)) {
            sql += (sql.empty() ? " WHERE " : " AND ") + column + " = ?" + std::to_string(first++);
        }
        return sql;
    };
    update_ = store.Prepare("UPDATE " + name + " SET " + columns + where(number + 1));
    delete_ = store.Prepare("DELETE FROM " + name + where(1));
}

int RowWriter::BindIdentity(SqliteStatement& statement, const Row& identity, int first) const {
    for (size_t i = 0; i < identity.size(); ++i) {
        statement.Bind(first++, identity[i].View(), types_[i]);
    }
    return first;
}

void RowWriter::Update(const Row& identity, const Row& row) {
    int number = 0;
    for (size_t i = 0; i < row.size(); ++i) {
        const ColumnInfo& column = table_.columns[i];
        if (column.stored) update_.Bind(++number, row[i].View(), column.type);
    }
    BindIdentity(update_, identity, number + 1);
    try {
        update_.Run();
    } catch (const DuplicateKey& duplicate) {
        update_.Reset();
        checker_.RaiseDuplicate(duplicate.text, row);
    }
}

void RowWriter::Delete(const Row& identity) {
    BindIdentity(delete_, identity, 1);
    delete_.Run();
}

}  // namespace quarv::localdb::engine
