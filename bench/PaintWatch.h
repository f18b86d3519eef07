// PaintWatch: waits for the moment when the last of some widgets has been painted. It watches from
// its construction on, and the widgets outlive it.
#pragma once

#include <QObject>
#include <QWidgetList>

namespace quarv::bench {

class PaintWatch : public QObject {
  public:
    explicit PaintWatch(const QWidgetList& widgets);

    // Handles events until each of the widgets has been painted.
    void Wait();

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QObjectList unpainted_;
};

}  // namespace quarv::bench
