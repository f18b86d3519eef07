#include "platform/forms/Control.h"

#include <QMetaObject>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "base/RuntimeError.h"
#include "platform/drawing/Fonts.h"
#include "platform/forms/ControlHost.h"
#include "platform/forms/Form.h"
#include "platform/forms/Twips.h"

namespace quarv::forms {

namespace {

void Remove(const SharedControlList& list, Control* control) {
    if (!list) return;
    // Destruction mostly runs in creation order or from the newest; both ends are cheap.
    if (!list->empty() && list->back() == control) {
        list->pop_back();
        return;
    }
    list->erase(std::remove(list->begin(), list->end(), control), list->end());
}

}  // namespace

Control::Control(QWidget* self, QWidget* container, const QString& name) : widget_(self) {
    widget_->setObjectName(name);
    if (container == nullptr) return;
    Register(container);
    if (container->isVisible()) {
        // A child made while its window is on screen stays hidden unless shown; by the time of the
        // call the concrete control is complete.
        QMetaObject::invokeMethod(
            widget_, [this] { ApplyVisible(visible_); }, Qt::QueuedConnection);
    }
}

Control::~Control() {
    Remove(contained_, this);
    Remove(controls_, this);
}

void Control::Register(QWidget* container) {
    if (auto* direct = dynamic_cast<Container*>(container)) {
        contained_ = direct->contained_;
        contained_->push_back(this);
    }
    for (QWidget* outer = container; outer != nullptr; outer = outer->parentWidget()) {
        auto* host = dynamic_cast<ControlHost*>(outer);
        if (host == nullptr || !host->OwnsNames()) continue;
        controls_ = host->controls_;
        controls_->push_back(this);
        return;
    }
}

QString Control::Name() const {
    return widget_->objectName();
}

QString Control::TypeName() const {
    const QString full = QString::fromLatin1(widget_->metaObject()->className());
    return full.mid(full.lastIndexOf(u':') + 1);
}

Form* Control::ParentForm() const {
    for (QWidget* outer = widget_; outer != nullptr; outer = outer->parentWidget())
        if (auto* form = dynamic_cast<Form*>(outer)) return form;
    return nullptr;
}

QRect Control::PixelGeometry() const {
    // Edges are rounded, not sizes, so that controls that touch in twips touch in pixels.
    const QPoint topLeft(ToPixels(left_), ToPixels(top_));
    const QSize size(ToPixels(left_ + width_) - topLeft.x(),
                     ToPixels(top_ + height_) - topLeft.y());
    return {topLeft, size};
}

void Control::Move(double left, double top, double width, double height) {
    for (double length : {left, top, width, height})
        if (!std::isfinite(length)) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    if (width < 0 || height < 0) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    const bool moved = left != left_ || top != top_;
    const bool resized = width != width_ || height != height_;
    left_ = left;
    top_ = top;
    width_ = width;
    height_ = height;
    if (!moved && !resized) return;
    ApplyGeometry(PixelGeometry(), moved, resized);
    if (resized) SizeChanged();
}

void Control::ApplyGeometry(const QRect& pixels, bool, bool) {
    widget_->setGeometry(pixels);
}

void Control::AdoptSize(const QSize& pixels) {
    const QSize known = PixelGeometry().size();
    if (pixels == known) return;
    if (pixels.width() != known.width()) width_ = ToTwips(pixels.width());
    if (pixels.height() != known.height()) height_ = ToTwips(pixels.height());
    SizeChanged();
}

void Control::AdoptPosition(const QPoint& pixels) {
    if (pixels.x() != ToPixels(left_)) left_ = ToTwips(pixels.x());
    if (pixels.y() != ToPixels(top_)) top_ = ToTwips(pixels.y());
}

void Control::SetVisible(bool visible) {
    visible_ = visible;
    ApplyVisible(visible);
}

void Control::ApplyVisible(bool visible) {
    widget_->setVisible(visible);
}

void Control::SetEnabled(bool enabled) {
    enabled_ = enabled;
    widget_->setEnabled(enabled);
}

void Control::SetToolTipText(const QString& text) {
    toolTip_ = text;
    // A tool tip that looks like markup would be shown as such.
    widget_->setToolTip(
        text.isEmpty() ? text : QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped()));
}

QString Control::SpokenName() const {
    if (!spokenName_.isEmpty()) return spokenName_;
    return derivedName_.isEmpty() ? Name() : derivedName_;
}

void Control::SetSpokenName(const QString& text) {
    spokenName_ = text;
    RefreshSpokenName();
}

void Control::DeriveSpokenName(const QString& text) {
    derivedName_ = text;
    RefreshSpokenName();
}

void Control::RefreshSpokenName() {
    if (QWidget* inner = InnerWidget()) inner->setAccessibleName(SpokenName());
}

void Control::SetFontName(const QString& name, double points) {
    const double size = points > 0 ? points : widget_->font().pointSizeF();
    widget_->setFont(drawing::FontNamed(name, size));
}

void Control::ZOrder() {
    widget_->raise();
}

void Control::SetFocus() {
    widget_->setFocus(Qt::OtherFocusReason);
}

Control* ControlOf(QWidget* widget) {
    return dynamic_cast<Control*>(widget);
}

}  // namespace quarv::forms
