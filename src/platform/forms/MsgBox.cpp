#include "platform/forms/MsgBox.h"

#include "platform/forms/Application.h"
#include "platform/forms/MessageDialog.h"

namespace quarv::forms {

namespace {

// Without an active window (another program has the focus) the box belongs to one that is seen.
QWidget* WindowBelow() {
    if (QWidget* active = QApplication::activeWindow()) return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowType() == Qt::Window) return window;
    return nullptr;
}

// However busy the program is, while a box is up it waits for the user.
class PlainCursor {
  public:
    PlainCursor() {
        if (busy_) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~PlainCursor() {
        if (busy_) QGuiApplication::restoreOverrideCursor();
    }
    PlainCursor(const PlainCursor&) = delete;
    PlainCursor& operator=(const PlainCursor&) = delete;

  private:
    const bool busy_ = QGuiApplication::overrideCursor() != nullptr;
};

}  // namespace

BoxAnswer MsgBox(const QString& text, const QString& title, BoxIcon icon, BoxButtons buttons) {
    MessageDialog dialog(WindowBelow(), text, title.isEmpty() ? Application::Title() : title, icon,
                         buttons);
    const PlainCursor plain;
    dialog.exec();
    return dialog.Answer();
}

}  // namespace quarv::forms
