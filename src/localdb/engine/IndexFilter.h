// IndexFilter: the condition of a filtered index: comparisons of columns with constants and tests
// for null, joined by AND, as the storage can hold them in an index of its own.
#pragma once

#include <string>

#include "localdb/engine/ObjectInfo.h"
#include "localdb/tsql/Expression.h"

namespace quarv::localdb::engine {

class IndexFilter {
  public:
    // The condition as the catalogue keeps it: "([a]>(0))". Raises SqlError 10735 for what cannot
    // stand in one, 207 for an unknown column and what its constants raise.
    static QString Text(const TableInfo& table, const tsql::Expression& condition,
                        const QString& index);
    // The same as storage SQL over the table's storage columns, constants included.
    static std::string Sql(const TableInfo& table, const QString& text);
};

}  // namespace quarv::localdb::engine
