#include "PaintWatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace quarv::bench {

PaintWatch::PaintWatch(const QWidgetList& widgets) {
    for (QWidget* widget : widgets) {
        unpainted_ << widget;
        widget->installEventFilter(this);
    }
}

void PaintWatch::Wait() {
    while (!unpainted_.isEmpty()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

// The window hands its picture on only when all of them have painted into it.
bool PaintWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) unpainted_.removeOne(watched);
    return false;
}

}  // namespace quarv::bench
