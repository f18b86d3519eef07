// FirstPaint: loaded into a program before it starts, ends it with status 0 as soon as its first
// window has been painted. Whoever starts the program measures how long that took.
#include <unistd.h>

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace {

class EndAfterFirstPaint : public QObject {
  public:
    using QObject::QObject;

    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (event->type() != QEvent::Paint || !receiver->isWidgetType()) return false;
        auto* window = static_cast<QWidget*>(receiver)->window();
        if (!window->isVisible()) return false;
        // The next event comes only when the whole window has been drawn and handed over.
        QTimer::singleShot(0, [] { _exit(0); });
        QCoreApplication::instance()->removeEventFilter(this);
        return false;
    }
};

void Install() {
    QCoreApplication* application = QCoreApplication::instance();
    application->installEventFilter(new EndAfterFirstPaint(application));
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(Install)
