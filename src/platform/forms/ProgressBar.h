// ProgressBar: the platform's bar that fills while work goes on. Work mostly holds the one thread,
// so a new value is painted by whoever sets it, not by the event loop, and lets no event in.
#pragma once

#include <QBasicTimer>
#include <QProgressBar>
#include <functional>
#include <optional>

#include "platform/forms/Control.h"

namespace quarv::forms {

class ProgressBar : public QProgressBar, public Control {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(qint32 Min READ Min WRITE SetMin)
    Q_PROPERTY(qint32 Max READ Max WRITE SetMax)
    Q_PROPERTY(qint32 Value READ Value WRITE SetValue)

  public:
    // Milliseconds since a moment of its own choice.
    using Clock = std::function<qint64()>;

    // `clock` says when a value may be shown again; without one, the time that really passes.
    ProgressBar(QWidget* container, const QString& name, Clock clock = {});

    // The ends of the range, 0 and 100 at first. A Max that is not greater than Min raises
    // InvalidPropertyValue. A value outside a new range moves to its nearer end.
    qint32 Min() const { return min_; }
    qint32 Max() const { return max_; }
    void SetMin(qint32 min) { SetRange(min, max_); }
    void SetMax(qint32 max) { SetRange(min_, max); }

    // Shown at once, but no more often than twenty times a second; Max always. What was held back
    // is shown as soon as the event loop runs and its time has come. Outside the range raises
    // InvalidPropertyValue.
    qint32 Value() const { return value_; }
    void SetValue(qint32 value);

  protected:
    void timerEvent(QTimerEvent* event) override;

  private:
    void SetRange(qint32 min, qint32 max);
    void ShowValue();

    Clock clock_;
    qint32 min_ = 0;
    qint32 max_ = 100;
    qint32 value_ = 0;
    std::optional<qint64> shownAt_;  // by the clock; nothing before the first value
    QBasicTimer heldBack_;           // runs while value_ waits to be shown
};

}  // namespace quarv::forms
