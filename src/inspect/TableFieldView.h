// TableFieldView: the pane that lists a table's columns and keeps its CREATE TABLE script. The
// window that shows it owns it and lends the connection on each call; the pane keeps none of it.
#pragma once

#include "inspect/TableListPane.h"
#include "inspect/TableScript.h"

namespace quarv {

class SQLServerConnection;

class TableFieldView : public TableListPane {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString ScriptText READ ScriptText)

  public:
    TableFieldView(QWidget* container, const QString& name);

    // Fills list and script for the table. What the columns query or reading it raises travels on;
    // list and script then hold what came before it.
    void Investigate(const QString& Tbl, SQLServerConnection& Db);
    // The script of the last table, each line ended by CR LF; empty before the first.
    QString ScriptText() const { return script_.Text(); }

  private:
    TableScript script_;
};

}  // namespace quarv
