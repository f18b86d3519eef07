// MainWindow: what the connection dialog asks of the main window. The program implements it and
// hands it in, so that nothing here knows the window.
#pragma once

#include <QString>

namespace quarv {

class MainWindow {
  public:
    virtual ~MainWindow() = default;

    // Opens the database that `connStr` names and shows the window on it. Called once. Raises what
    // opening and reading the catalogue raise; the window is then not shown.
    virtual void DoView(const QString& connStr) = 0;
};

}  // namespace quarv
