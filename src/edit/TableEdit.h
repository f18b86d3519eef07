// TableEdit: the pane with the rows of one table in an editable grid. The main window owns it and
// says which rows to show. What the user changes stays in the grid: the statement that would store
// a changed cell is composed, and deliberately never sent.
#pragma once

#include <memory>

#include "base/StringList.h"
#include "grid/KelEditGridColumn.h"
#include "grid/KelEditGridRow.h"
#include "platform/ado/Recordset.h"
#include "platform/forms/UserControl.h"

namespace quarv {

class KelEditGrid;
class SQLServerConnection;

class TableEdit : public forms::UserControl {
    Q_OBJECT

  public:
    TableEdit(QWidget* container, const QString& name);

    // Shows the rows of `Query`, which reads the table `TableName`. A query or a row that fails is
    // told in a box: the grid then keeps what it had, or shows the columns without rows where it
    // had come to them. Raises what DeterminePrimaryKey raises; the grid then stays as it was, and
    // its rows are without a key.
    void Investigate(const QString& Query, const QString& TableName,
                     const std::shared_ptr<SQLServerConnection>& Db);
    // Takes the names of the table's primary-key columns in key order, of a table without such a
    // key that of its first column; none of the empty name, for which nothing is asked. Raises 3265
    // for a table that the catalogue does not know, ObjectNotSet before Investigate, and what the
    // connection raises.
    void DeterminePrimaryKey(const QString& Tbl);

  protected:
    void UserControl_Resize() override;

  private:
    void Load();
    void SetColumns(const ado::Fields& fields);
    void Editor_ColumnChanged(const RowRef& row, const ColumnRef& column);

    KelEditGrid* Editor;
    QString query_;
    QString tableName_;
    std::shared_ptr<SQLServerConnection> db_;
    StringList primaryKey_;
};

}  // namespace quarv
