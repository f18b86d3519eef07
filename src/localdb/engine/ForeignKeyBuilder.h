// ForeignKeyBuilder: checks a FOREIGN KEY against the table that it refers to and makes what the
// catalogue is to know about it. Changes nothing itself.
#pragma once

#include "localdb/engine/Metadata.h"
#include "localdb/tsql/TableElements.h"

namespace quarv::localdb::engine {

class ForeignKeyBuilder {
  public:
    // `table` is complete but for the key and may refer to itself.
    ForeignKeyBuilder(Metadata& metadata, TableInfo& table) : metadata_(metadata), table_(table) {}

    // Adds the key to the table. Raises SqlError 1753, 1761 to 1778, 1785 or 8139.
    void Add(const tsql::ForeignKey& definition, const QString& name, bool systemNamed);

  private:
    TableInfo FindReferenced(const tsql::ForeignKey& definition);
    void AddColumns(const tsql::ForeignKey& definition, const TableInfo& referenced);
    void FindKey(const tsql::ForeignKey& definition, const TableInfo& referenced);
    void CheckTypes(const TableInfo& referenced) const;
    void CheckActions() const;
    void CheckPaths(bool deletes) const;

    Metadata& metadata_;
    TableInfo& table_;
    ForeignKeyInfo key_;
};

}  // namespace quarv::localdb::engine
