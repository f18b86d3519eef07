// TableBuilder: checks the definition of a new table, or of what ALTER TABLE adds to one, and makes
// what the catalogue is to know about it: types, nullability, names of unnamed constraints,
// indexes, checks, foreign keys. Changes nothing itself but takes object numbers.
#pragma once

#include "localdb/engine/Frame.h"
#include "localdb/tsql/TableElements.h"

namespace quarv::localdb::engine {

class RowExpression;

class TableBuilder {
  public:
    TableBuilder(const tsql::TableElements& definition, Frame& frame, Metadata& metadata)
        : definition_(definition),
          frame_(frame),
          metadata_(metadata),
          context_(frame.NewContext()) {}

    // Columns with their defaults' texts, indexes of constraints with `constraintId` still
    // NewConstraint, checks and foreign keys without a number. Raises SqlError.
    TableInfo Build(int64_t objectId, const ObjectInfo& object);
    // Adds the definition's parts to a table that is loaded with its constraints. Likewise.
    void Extend(TableInfo& table);

  private:
    void AddParts(TableInfo& table);
    void AddColumn(TableInfo& table, const tsql::ColumnDefinition& column);
    void AddComputed(TableInfo& table, const tsql::ColumnDefinition& column);
    void AddIdentity(TableInfo& table, const tsql::ColumnDefinition& column);
    void AddDefault(TableInfo& table, ColumnInfo& column, const tsql::Expression& value,
                    const QString& name, int line);
    void AddDefaults(TableInfo& table);
    void AddKeys(TableInfo& table);
    void AddKey(TableInfo& table, const tsql::KeyConstraint& key, bool clustered);
    void AddIndexes(TableInfo& table);
    void AddChecks(TableInfo& table);
    bool IsClustered(const TableInfo& table, const tsql::KeyConstraint& key) const;
    bool MayTurnNotNull(const TableInfo& table, size_t place) const;
    // "CK__table__column__0123ABCD"
    QString NameFor(const char* kind, const TableInfo& table, const QString& column, size_t number);

    const tsql::TableElements& definition_;
    Frame& frame_;
    Metadata& metadata_;
    BindContext context_;
    bool isNew_ = true;
    size_t oldColumns_ = 0;  // that the table had already
};

// As the catalogue keeps an index; raises SqlError 1902, 1909, 1911, 1913, 1919, 2729, 10735. A
// computed column that it needs is given a place in the storage (`table`).
IndexInfo BuildIndex(Frame& frame, TableInfo& table, const tsql::IndexDefinition& definition,
                     const QString& tableName);
// Raises SqlError 1911, 1919 or 2729 for a column that cannot be a key; gives its place.
size_t FindKeyColumn(Frame& frame, TableInfo& table, const QString& name);
// The next free number of an index of the table.
int NextIndexId(const TableInfo& table, bool clustered);
// The text of a computed column's or a check's tree, in its parentheses; `source` where the tree
// holds what has no text of its own.
QString TextOf(const tsql::Expression& tree, const QString& source, bool isCondition);

}  // namespace quarv::localdb::engine
