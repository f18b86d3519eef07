// TableAlter: one ALTER TABLE: finds the table, changes it and its catalogue as a whole or not at
// all. Each clause is a class of its own, made and run by RunAlterTable. Borrows the statement and
// its frame.
#pragma once

#include "localdb/engine/Frame.h"
#include "localdb/engine/SqlError.h"
#include "localdb/tsql/AlterTable.h"

namespace quarv::localdb::engine {

class TableAlter {
  public:
    // Raises SqlError 208 where there is no such database.
    TableAlter(const tsql::AlterTable& node, Frame& frame);
    virtual ~TableAlter() = default;
    TableAlter(const TableAlter&) = delete;
    TableAlter& operator=(const TableAlter&) = delete;

    // Raises SqlError 4902 or 4909 and what the clause raises.
    void Run();

  protected:
    // Inside the transaction, the table loaded with its constraints.
    virtual void Change() = 0;

    Store& GetStore() { return frame_.Session().store; }
    // The column; raises SqlError 4924, which `verb` ("ALTER COLUMN") begins.
    const ColumnInfo& FindColumn(const QString& name, const QString& verb, int line) const;
    // The table as messages about its columns name it.
    QString TableName() const;
    // Asked of its storage as it was before.
    bool HasRows();
    int64_t CountRows();
    // Raises SqlError 515 where a column that takes no nulls holds one.
    void RequireValues(const ColumnInfo& column);

    const tsql::AlterTable& node_;
    Frame& frame_;
    BindContext context_;
    Metadata metadata_;
    TableInfo table_;  // as it was before
};

}  // namespace quarv::localdb::engine
