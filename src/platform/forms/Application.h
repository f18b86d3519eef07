// Application: the program's QApplication. It keeps what leaves an event handler from ending the
// program: the event ends, number and description go to stderr. main owns it.
#pragma once

#include <QApplication>
#include <QString>

namespace quarv::forms {

class Application : public QApplication {
    Q_OBJECT

  public:
    // Keeps the references, as QApplication does; both must outlive it.
    Application(int& argc, char** argv);

    // "Quarv", the title of boxes that have none of their own.
    static QString Title();

    // Runs an event handler. What it throws ends it here and is reported by ReportError. Every
    // event of a form or control is raised through this, so that nothing is thrown through Qt.
    template <typename Handler>
    static void RunEvent(Handler&& handler) {
        try {
            handler();
        } catch (...) {
            ReportError();
        }
    }

    // Writes the exception being handled as one line "number: description" to stderr.
    static void ReportError() noexcept;

    // Lets pending window messages run once and paints what is to be painted, for a caller that is
    // about to block. What the user does meanwhile waits: it must not run into the caller.
    static void DoEvents();

    // Gives a key that is let go to the form around `receiver` first.
    bool notify(QObject* receiver, QEvent* event) override;

  private:
    // True where the form took the key.
    static bool PreviewedKeyUp(QObject& receiver, const QEvent& event);
};

}  // namespace quarv::forms
