#include "platform/forms/ScrollBar.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>

#include "base/RuntimeError.h"
#include "platform/forms/Application.h"
#include "platform/forms/Twips.h"

namespace quarv::forms {

namespace {

qint16 AtLeastOne(qint16 positions) {
    if (positions < 1) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    return positions;
}

}  // namespace

ScrollBar::ScrollBar(QWidget* container, const QString& name, Qt::Orientation orientation)
    : QScrollBar(orientation, container), Control(this, container, name) {
    setRange(min_, max_);
    setSingleStep(1);
    setPageStep(1);
    setFocusPolicy(Qt::StrongFocus);
    RefreshSpokenName();
    connect(this, &QScrollBar::valueChanged, this, [this] {
        if (!isSliderDown()) Settle();
    });
    connect(this, &QScrollBar::sliderReleased, this, &ScrollBar::Settle);
}

qint16 ScrollBar::Value() const {
    return static_cast<qint16>(Mirrored(value()));
}

void ScrollBar::SetValue(qint16 value) {
    const auto [low, high] = std::minmax(min_, max_);
    if (value < low || value > high) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    if (value == Value()) return;
    {
        const QSignalBlocker quiet(this);
        setValue(Mirrored(value));
    }
    RaiseChange(value);
}

void ScrollBar::SetEnds(qint16 min, qint16 max) {
    const qint16 before = Value();
    min_ = min;
    max_ = max;
    const auto [low, high] = std::minmax(min_, max_);
    const qint16 kept = std::clamp(before, low, high);
    {
        const QSignalBlocker quiet(this);
        setRange(low, high);
        setValue(Mirrored(kept));
    }
    if (kept != before) RaiseChange(kept);
}

void ScrollBar::SetSmallChange(qint16 positions) {
    setSingleStep(AtLeastOne(positions));
}

void ScrollBar::SetLargeChange(qint16 positions) {
    setPageStep(AtLeastOne(positions));
}

double ScrollBar::Extent() const {
    return ToTwips(style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this));
}

void ScrollBar::Settle() {
    if (Value() != announced_) RaiseChange(Value());
}

void ScrollBar::RaiseChange(qint16 value) {
    announced_ = value;
    Application::RunEvent([this] { Q_EMIT Change(); });
}

void ScrollBar::keyPressEvent(QKeyEvent* event) {
    // Qt's bar takes these two the other way round, as it has the wheel in mind.
    if (event->key() != Qt::Key_Left && event->key() != Qt::Key_Right) {
        QScrollBar::keyPressEvent(event);
        return;
    }
    const bool onward = (event->key() == Qt::Key_Right) != isRightToLeft();
    triggerAction(onward ? SliderSingleStepAdd : SliderSingleStepSub);
}

void ScrollBar::mouseMoveEvent(QMouseEvent* event) {
    const qint16 before = Value();
    QScrollBar::mouseMoveEvent(event);
    if (isSliderDown() && Value() != before) Application::RunEvent([this] { Q_EMIT Scroll(); });
}

void ScrollBar::hideEvent(QHideEvent* event) {
    QScrollBar::hideEvent(event);
    // The release of the button will not be seen here.
    setSliderDown(false);
}

void ScrollBar::focusInEvent(QFocusEvent* event) {
    QScrollBar::focusInEvent(event);
    Application::RunEvent([this] { Q_EMIT GotFocus(); });
}

void ScrollBar::focusOutEvent(QFocusEvent* event) {
    QScrollBar::focusOutEvent(event);
    Application::RunEvent([this] { Q_EMIT LostFocus(); });
}

}  // namespace quarv::forms
