#include "grid/HBigScroller.h"

#include <QSignalBlocker>

#include "platform/forms/Application.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TextBox.h"

namespace quarv {

using forms::Application;
using forms::ScrollBar;
using forms::TextBox;

namespace {

constexpr double OutsideView = 100;  // twips right of the visible area
constexpr double GrabberSize = 300;  // twips

}  // namespace

HBigScroller::HBigScroller(QWidget* container, const QString& name)
    : UserControl(container, name),
      scroller_(new ScrollBar(this, QStringLiteral("Scroller"), Qt::Horizontal)),
      focusGrabber_(new TextBox(this, QStringLiteral("FocusGrabber"))) {
    setFocusProxy(scroller_);
    RefreshSpokenName();
    focusGrabber_->Move(OutsideView, 0, GrabberSize, GrabberSize);
    FollowScroller();
    FollowFocusGrabber();
    SetRange(0, 100);
}

QWidget* HBigScroller::InnerWidget() const {
    return scroller_;
}

void HBigScroller::FollowScroller() {
    connect(scroller_, &ScrollBar::Change, this, &HBigScroller::ScrollerChange);
    connect(scroller_, &ScrollBar::Scroll, this, &HBigScroller::ScrollerScroll);
    connect(scroller_, &ScrollBar::GotFocus, this, [this] { hasFocus_ = true; });
    connect(scroller_, &ScrollBar::LostFocus, this, [this] { hasFocus_ = false; });
}

void HBigScroller::FollowFocusGrabber() {
    // It is out of sight: the Tab key must not stop there.
    focusGrabber_->focusProxy()->setFocusPolicy(Qt::ClickFocus);
    connect(focusGrabber_, &TextBox::KeyPress, this, [](int& keyAscii) { keyAscii = 0; });
    connect(focusGrabber_, &TextBox::Change, this, [this] { focusGrabber_->SetText({}); });
}

void HBigScroller::SetRange(qint32 lMin, qint32 lMax) {
    mapping_.SetRange(lMin, lMax);
    {
        // Where the new ends push the bar along, no user has moved it.
        const QSignalBlocker quiet(scroller_);
        scroller_->SetMax(mapping_.InnerMaximum());
        scroller_->SetMin(mapping_.InnerMinimum());
    }
    scroller_->SetValue(mapping_.ToLowEnd(scroller_->Min()));
}

void HBigScroller::SetMin(qint32 min) {
    if (min != Min()) SetRange(min, Max());
}

void HBigScroller::SetMax(qint32 max) {
    if (max != Max()) SetRange(Min(), max);
}

qint16 HBigScroller::SmallChange() const {
    return scroller_->SmallChange();
}

qint16 HBigScroller::LargeChange() const {
    return scroller_->LargeChange();
}

void HBigScroller::SetSmallChange(qint16 positions) {
    scroller_->SetSmallChange(positions);
}

void HBigScroller::SetLargeChange(qint16 positions) {
    scroller_->SetLargeChange(positions);
}

void HBigScroller::SetValue(qint32 value) {
    if (value == Value()) return;
    scroller_->SetValue(mapping_.SetValue(value, {scroller_->Min(), scroller_->Max()}));
}

bool HBigScroller::Enabled() const {
    scroller_->update();
    return UserControl::Enabled();
}

void HBigScroller::SetEnabled(bool enabled) {
    UserControl::SetEnabled(enabled);
    Application::RunEvent([this] { Q_EMIT PropertyChanged(QStringLiteral("Enabled")); });
    scroller_->update();
}

void HBigScroller::ScrollerChange() {
    if (!Visible()) return;
    ScrollerScroll();
    // The bar would keep a focus mark.
    if (hasFocus_) focusGrabber_->SetFocus();
}

void HBigScroller::ScrollerScroll() {
    if (!mapping_.MovedTo(scroller_->Value(), {SmallChange(), LargeChange()})) return;
    Application::RunEvent([this] { Q_EMIT Change(); });
}

void HBigScroller::UserControl_Resize() {
    scroller_->Move(0, 0, ScaleWidth(), ScaleHeight());
    focusGrabber_->SetLeft(ScaleWidth() + OutsideView);
}

}  // namespace quarv
