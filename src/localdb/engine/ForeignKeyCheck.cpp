#include "localdb/engine/ForeignKeyCheck.h"

#include "localdb/engine/ConstraintConflict.h"

namespace quarv::localdb::engine {

std::string KeyCondition(const std::vector<int>& columns, int first) {
    std::string sql;
    for (const int column : columns) {
        if (!sql.empty()) sql += " AND ";
        sql += 'c' + std::to_string(column) + " = ?" + std::to_string(first++);
    }
    return sql;
}

ForeignKeyCheck::ForeignKeyCheck(Frame& frame, Metadata& metadata, const TableInfo& table,
                                 const ForeignKeyInfo& key, const QString& statement)
    : store_(frame.Session().store),
      metadata_(metadata),
      table_(table),
      key_(key),
      statement_(statement) {
    for (const ForeignKeyInfo::Column& column : key.columns) {
        places_.push_back(table.PlaceOf(column.columnId));
    }
}

// A key with a null in it refers to nothing.
void ForeignKeyCheck::Take(const Row& row) {
    Row key;
    for (const size_t place : places_) {
        if (row[place].View().IsNull()) return;
        key.push_back(row[place]);
    }
    if (IsThere(key)) return;
    if (!key_.IsWithinTable()) Raise();
    waiting_.push_back(std::move(key));
}

void ForeignKeyCheck::Finish() {
    for (const Row& key : waiting_) {
        if (!IsThere(key)) Raise();
    }
    waiting_.clear();
}

bool ForeignKeyCheck::IsThere(const Row& key) {
    if (!find_.Handle()) {
        std::vector<int> columns;
        for (const ForeignKeyInfo::Column& column : key_.columns) {
            columns.push_back(column.referencedId);
        }
        find_ = store_.Prepare("SELECT 1 FROM " + metadata_.Prefix() + 't' +
                               std::to_string(key_.referencedTable) + " WHERE " +
                               KeyCondition(columns));
    }
    for (size_t i = 0; i < key.size(); ++i) {
        find_.Bind(static_cast<int>(i) + 1, key[i].View(), table_.columns[places_[i]].type);
    }
    const bool there = find_.Step();
    find_.Reset();
    return there;
}

void ForeignKeyCheck::Raise() {
    throw ForeignKeyConflict(statement_, key_, metadata_);
}

}  // namespace quarv::localdb::engine
