// QuarvBAS: the program: it sets the hooks of the lower floors, shows the connection dialog and
// keeps the reference to the main window. main owns it; no other folder may include it.
#pragma once

#include <memory>

#include "controls/Monitors.h"
#include "db/MainWindow.h"
#include "db/Registry.h"
#include "platform/ado/Connection.h"
#include "platform/desktop/QtDesktop.h"

namespace quarv {

class DatabaseView;
class SQLServerConnectionDetails;

class QuarvBAS : public MainWindow {
  public:
    // The application object stands already; `registry` and whatever `newConnection` needs outlive
    // this.
    QuarvBAS(ado::ConnectionFactory newConnection, Registry& registry);
    ~QuarvBAS() override;

    // Shows the connection dialog and runs until the last window is closed. 0, or 1 where the
    // database could not be shown.
    int Run();

    // Where the main window cannot be shown, tells the user why, closes what was shown and ends
    // the run; then raises on.
    void DoView(const QString& connStr) override;

  private:
    void EndAfter(const QString& description);

    void SetHooks();

    ado::ConnectionFactory newConnection_;
    Registry& registry_;
    desktop::QtDesktop desktop_;
    Monitors monitors_{desktop_};
    std::unique_ptr<SQLServerConnectionDetails> dialog_;
    std::unique_ptr<DatabaseView> mainWindow_;
    int status_ = 0;
};

}  // namespace quarv
