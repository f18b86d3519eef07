#include "platform/forms/ProgressBar.h"

#include <QElapsedTimer>
#include <QTimerEvent>
#include <algorithm>

#include "base/RuntimeError.h"

namespace quarv::forms {

namespace {

constexpr int LeastMilliseconds = 50;  // from one painting to the next

ProgressBar::Clock RealTime() {
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

}  // namespace

ProgressBar::ProgressBar(QWidget* container, const QString& name, Clock clock)
    : QProgressBar(container),
      Control(this, container, name),
      clock_(clock ? std::move(clock) : RealTime()) {
    setTextVisible(false);
    setRange(min_, max_);
    setValue(value_);
    RefreshSpokenName();
}

void ProgressBar::SetRange(qint32 min, qint32 max) {
    if (max <= min) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    min_ = min;
    max_ = max;
    value_ = std::clamp(value_, min, max);
    heldBack_.stop();
    setRange(min, max);
    setValue(value_);
}

void ProgressBar::SetValue(qint32 value) {
    if (value < min_ || value > max_) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    value_ = value;
    if (value == QProgressBar::value()) {
        heldBack_.stop();
        return;
    }
    const qint64 wait = shownAt_ ? *shownAt_ + LeastMilliseconds - clock_() : 0;
    if (wait <= 0 || value == max_) {
        ShowValue();
    } else if (!heldBack_.isActive()) {
        heldBack_.start(static_cast<int>(std::min<qint64>(wait, LeastMilliseconds)), this);
    }
}

// Qt's own bar paints a new value before it returns, where that shows another length; the platform
// sends what was painted at once. Nothing here runs the event loop.
void ProgressBar::ShowValue() {
    heldBack_.stop();
    shownAt_ = clock_();
    setValue(value_);
}

void ProgressBar::timerEvent(QTimerEvent* event) {
    if (event->timerId() != heldBack_.timerId()) {
        QProgressBar::timerEvent(event);
        return;
    }
    ShowValue();
}

}  // namespace quarv::forms
