// Hooks: what the module UTIL asks of the floors above, which register it at the program's start. A
// hook that is not set means that there is nothing to do. It knows no widget.
#pragma once

#include <QObject>
#include <QString>
#include <functional>

namespace quarv {

struct Hooks {
    // Shows an information box with an OK button. The text has its line breaks as CR LF.
    std::function<void(const QString& text, const QString& title)> showNote;
    // Shows a question box with Yes and No; true for Yes.
    std::function<bool(const QString& text, const QString& title)> askYesNo;
    // Centres the form on the monitor that holds the main window (null: on the primary one); it may
    // give another main window back. Set as long as there is a collection of monitors.
    std::function<void(QObject& form, QObject*& mainWindow)> centreForm;
    // The program-wide reference to the main window; null while there is none. Not owned.
    std::function<QObject*()> mainWindow;
    std::function<void(QObject* mainWindow)> setMainWindow;
};

// The hooks of this program, empty until somebody sets them. For the user-interface thread.
Hooks& ProgramHooks();

}  // namespace quarv
