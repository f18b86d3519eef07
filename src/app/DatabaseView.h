// DatabaseView: the main window: one database as a tree of its tables and procedures, and beside it
// the panes for the object clicked. The program owns it; it owns the query window and the
// connection, which it lends to that and to the panes. It builds, connects and routes; its parts
// keep their places whatever its size. It knows no dialog.
#pragma once

#include <memory>

#include "db/AutoFill.h"
#include "platform/ado/Connection.h"
#include "platform/forms/Form.h"

namespace quarv {

namespace forms {
class ButtonPlus;
class ComboBox;
class FramePlus;
class ImageList;
class Label;
class Node;
class TreeView;
}  // namespace forms
class QueryView;
class SQLServerConnection;
class SprocView;
class TableEdit;
class TableFieldView;
class TableIndexView;

class DatabaseView : public forms::Form {
    Q_OBJECT

  public:
    // The history of conditions is kept in `registry`, which outlives this.
    DatabaseView(ado::ConnectionFactory newConnection, Registry& registry);
    ~DatabaseView() override;

    // Opens the database, fills the tree and shows the window. Called once. Catches nothing: where
    // it raises, the window stays hidden.
    void DoView(const QString& ConnStr);

  protected:
    void Form_Load() override;

  private:
    void MakeControls();
    void PlaceTree();
    void PlaceTablePanes();
    void PlaceRecords();
    void PlaceProcedurePane();
    void Connect();
    void FillTree();
    void DBObjectList_NodeClick(const forms::Node& node);
    void ShowTable(const QString& name);
    void ShowProcedure(const QString& name);
    void RunCondition();
    void OpenQuery(const QString& text);

    ado::ConnectionFactory newConnection_;
    std::shared_ptr<SQLServerConnection> connection_;
    // The one query window, made when it is first asked for.
    std::unique_ptr<QueryView> query_;
    AutoFill conditionHistory_;
    // The table last shown; empty before the first.
    QString currentTable_;
    // Of the table or the procedure last shown; empty before the first.
    QString scriptText_;
    forms::ButtonPlus* LaunchQuery;
    forms::ButtonPlus* LaunchScript;
    forms::ImageList* Icons;
    forms::TreeView* DBObjectList;
    forms::FramePlus* TableFrame;
    TableFieldView* TableFieldViewer;
    TableIndexView* TableIndexViewer;
    forms::FramePlus* TableEditFrame;
    forms::Label* Label1;
    forms::ComboBox* TableEditCondition;
    TableEdit* TableEditor;
    forms::FramePlus* SprocFrame;
    SprocView* SprocViewer;
};

}  // namespace quarv
