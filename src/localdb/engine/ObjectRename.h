// ObjectRename: what sp_rename does: another name for an object, a column or an index. Texts that
// speak of the old name stay as they are. Borrows the frame.
#pragma once

#include "localdb/engine/Frame.h"
#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::engine {

class ObjectRename {
  public:
    ObjectRename(Frame& frame, const DatabaseEntry& database)
        : frame_(frame), metadata_(frame.Session().store, database) {}

    // `type` as the caller gave it; null: whatever has the name. Raises SqlError 15225, 15248 to
    // 15250, 15335, 15336.
    void Run(const QString& name, const QString& newName, const QString& type);

  private:
    bool TryObject();
    bool TryColumn();
    bool TryIndex();
    // The table that stands before a column's or index's name.
    std::optional<TableInfo> FindTable();
    void RenameColumn(const TableInfo& table, const ColumnInfo& column);

    Frame& frame_;
    Metadata metadata_;
    QString name_, newName_;
    tsql::ObjectName parts_;
};

}  // namespace quarv::localdb::engine
