// PaintCounter: how often a widget was asked to paint itself since it is watched.
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <utility>

namespace quarv::test {

class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget& watched) { watched.installEventFilter(this); }

    // Paints what is to be painted first; counts from the last call on.
    int Taken() {
        QCoreApplication::processEvents();
        return std::exchange(paints_, 0);
    }

    // What was painted already; what is still to be painted keeps waiting.
    int TakenAtOnce() { return std::exchange(paints_, 0); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints_;
        return QObject::eventFilter(watched, event);
    }

  private:
    int paints_ = 0;
};

}  // namespace quarv::test
