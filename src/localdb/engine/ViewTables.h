// ViewTables: which tables, views and columns the source of a view names, wherever they stand in
// it. Knows no catalogue: whether they exist is the asker's business.
#pragma once

#include <QString>
#include <vector>

#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::engine {

// Each name once, in the order in which they come first; names of the view's own WITH are none.
// Nothing where the source cannot be read.
std::vector<tsql::ObjectName> TablesOfView(const QString& source);

// A column that a name in the view may mean: the first table, from the innermost query outwards,
// that has such a column is the one that is meant.
struct ViewColumn {
    int reference = 0;  // the name's number; one name may mean columns of several tables
    int depth = 0;      // queries outwards; 0 is the one that the name stands in
    tsql::ObjectName table;
    QString name;  // empty: all of them
};

std::vector<ViewColumn> ColumnsOfView(const QString& source);

}  // namespace quarv::localdb::engine
