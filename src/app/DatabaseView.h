// DatabaseView: the main window: one database as a tree of its tables and procedures, and beside it
// the panes for the object clicked. The program owns it; it owns the query window and the
// connection, which it lends to that and to the panes. It knows no dialog.
#pragma once

#include <memory>

#include "platform/ado/Connection.h"
#include "platform/forms/Form.h"

namespace quarv {

namespace forms {
class ButtonPlus;
class FramePlus;
class ImageList;
class Node;
class TreeView;
}  // namespace forms
class QueryView;
class SQLServerConnection;
class TableFieldView;

class DatabaseView : public forms::Form {
    Q_OBJECT

  public:
    explicit DatabaseView(ado::ConnectionFactory newConnection);
    ~DatabaseView() override;

    // Opens the database, fills the tree and shows the window. Called once. Catches nothing: where
    // it raises, the window stays hidden.
    void DoView(const QString& ConnStr);

  private:
    void MakeControls();
    void FillTree();
    void DBObjectList_NodeClick(const forms::Node& node);
    void ShowTable(const QString& name);
    void ShowProcedure();
    void OpenQuery(const QString& text);

    ado::ConnectionFactory newConnection_;
    std::shared_ptr<SQLServerConnection> connection_;
    // The one query window, made when it is first asked for.
    std::unique_ptr<QueryView> query_;
    // Of the table last shown; empty before the first.
    QString scriptText_;
    forms::TreeView* DBObjectList;
    forms::ImageList* Icons;
    forms::ButtonPlus* LaunchQuery;
    forms::ButtonPlus* LaunchScript;
    forms::FramePlus* TableFrame;
    TableFieldView* TableFieldViewer;
};

}  // namespace quarv
