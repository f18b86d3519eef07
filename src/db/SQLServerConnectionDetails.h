// SQLServerConnectionDetails: the connection dialog, the first window of the system. It belongs to
// the program, which hands in the main window, the way to make connections, and the settings; it
// must not know what stands behind any of them.
#pragma once

#include "controls/TabControlHelper.h"
#include "db/ConnectionChoices.h"
#include "db/ConnectionInfo.h"
#include "db/MainWindow.h"
#include "platform/ado/Connection.h"
#include "platform/forms/Form.h"

namespace quarv {

class ConnectionDetailsControls;
class Registry;

class SQLServerConnectionDetails : public forms::Form {
    Q_OBJECT

  public:
    // `mainWindow` and `registry` outlive the dialog.
    SQLServerConnectionDetails(MainWindow& mainWindow, ado::ConnectionFactory newConnection,
                               Registry& registry);
    ~SQLServerConnectionDetails() override;

  protected:
    void Form_Load() override;

  private:
    void ConnectEvents();
    void ShowChoices(const ConnectionChoices& choices);
    ConnectionChoices ReadChoices() const;
    void EnableAccount();
    // Tells the user what is missing; true where nothing is.
    bool Validate() const;
    QString BuildConnectionString(const ConnectionChoices& choices);
    // These raise what opening raises. The second opens the server also where it has no database
    // of the chosen name.
    ado::ConnectionPtr OpenConnection(const ConnectionChoices& choices);
    ado::ConnectionPtr OpenServer(ConnectionChoices choices);
    // Null where something is missing or the connection cannot be opened; tells the user nothing.
    ado::ConnectionPtr TryOpenConnection();
    // What cannot be read is left out; the box keeps its text.
    void FillDatabaseList(ado::Connection& connection);
    void CreateDatabase(ado::Connection& connection, const QString& name);

    void Test_Click();
    void CreateDatabase_Click();
    void Okay_Click();
    void DatabaseList_KeyPress(int& keyAscii);

    MainWindow& mainWindow_;
    ado::ConnectionFactory newConnection_;
    Registry& registry_;
    ConnectionInfo model_;
    std::unique_ptr<ConnectionDetailsControls> controls_;
    TabControlHelper tabs_;
};

}  // namespace quarv
