// ServedWindow: the main window over the real driver, with its settings in a folder of its own.
// What it shows is read here, and it is worked as a hand does, by real events.
#pragma once

#include <QTemporaryDir>
#include <functional>

#include "app/DatabaseView.h"
#include "edit/EditorHand.h"
#include "platform/registry/Hives.h"
#include "support/BoxWatcher.h"

namespace quarv::test {

class ServedWindow {
  public:
    // Opened and shown. `commandTimeout` counts for every connection made for it, in seconds.
    explicit ServedWindow(const QString& connectionString, int commandTimeout = 30);
    ~ServedWindow();

    // Clicks on the node of that text; what is written to the log.
    QString ClickTable(const QString& name) { return ClickNode(QStringLiteral("_tbl_") + name); }
    QString ClickProcedure(const QString& name) { return ClickNode(QStringLiteral("_sp_") + name); }
    // Types the text into the condition box, over what it holds, and Enter; what is written to the
    // log.
    QString RunCondition(const QString& text);

    // The captions of the panes of a table: "Fields: t", "Indexes: t", "Records:t".
    QStringList Captions() const;
    // The columns pane's first column.
    QStringList Fields() const { return Listed("TableFieldViewer"); }
    QStringList Indexes() const { return Listed("TableIndexViewer"); }
    // The procedure pane's caption, parameters and source.
    QStringList Procedure() const;
    // The texts of the boxes since the last call. All are titled "Note", else the test fails.
    QStringList TakeBoxes();

    template <class T>
    T& Child(const char* name) const {
        return *window.findChild<T*>(QLatin1String(name));
    }

  private:
    QString ClickNode(const QString& key);
    QStringList Listed(const char* pane) const;

    QTemporaryDir folder_;
    registry::Hives hives_;
    Registry registry_{hives_};
    size_t boxesTaken_ = 0;

  public:
    DatabaseView window;
    BoxWatcher boxes;
    EditorHand editor;
};

// What `action` writes to the log.
QString LogOf(const std::function<void()>& action);

}  // namespace quarv::test
