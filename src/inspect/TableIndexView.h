// TableIndexView: the pane that lists a table's indexes, a row each, as the server reports them.
// The window that shows it owns it and lends the connection on each call; the pane keeps none of
// it.
#pragma once

#include "inspect/TableListPane.h"

namespace quarv {

class SQLServerConnection;

class TableIndexView : public TableListPane {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES

  public:
    TableIndexView(QWidget* container, const QString& name);

    // Fills the list; a table without indexes leaves it empty. What the query or reading its rows
    // raises travels on, NullAsText for a null among them; where a row fails, the list holds what
    // came before the failing field.
    void Investigate(const QString& Tbl, SQLServerConnection& Db);
};

}  // namespace quarv
