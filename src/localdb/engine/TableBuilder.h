// TableBuilder: checks the definition of a new table and makes what the catalogue knows about it:
// types, nullability, names of unnamed constraints, indexes. Changes nothing itself.
#pragma once

#include "localdb/engine/BindContext.h"
#include "localdb/tsql/CreateTable.h"

namespace quarv::localdb::engine {

class TableBuilder {
  public:
    TableBuilder(const tsql::CreateTable& definition, BindContext& context)
        : definition_(definition), context_(context) {}

    // Columns with their defaults' texts, indexes with `constraintId` still 0. Raises SqlError.
    TableInfo Build(int64_t objectId, const ObjectInfo& object);
    // The name of the default of column `index`.
    QString DefaultName(const TableInfo& table, size_t index) const;

  private:
    void AddColumn(TableInfo& table, const tsql::ColumnDefinition& column);
    void AddIdentity(TableInfo& table, const tsql::ColumnDefinition& column);
    void AddDefault(ColumnInfo& column, const tsql::ColumnDefinition& definition);
    void AddKeys(TableInfo& table);
    void AddKey(TableInfo& table, const tsql::KeyConstraint& key, bool clustered);
    bool IsClustered(const tsql::KeyConstraint& key) const;

    const tsql::CreateTable& definition_;
    BindContext& context_;
};

// Raises SqlError 1911 or 1919 for a column that cannot be a key.
const ColumnInfo& FindKeyColumn(const TableInfo& table, const QString& name);

}  // namespace quarv::localdb::engine
