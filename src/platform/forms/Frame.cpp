#include "platform/forms/Frame.h"

#include "base/RuntimeError.h"

namespace quarv::forms {

Frame::Frame(QWidget* container, const QString& name)
    : QGroupBox(container), Control(this, container, name) {
    RefreshSpokenName();
}

void Frame::SetBorderStyle(int border) {
    if (border < 0 || border > 1) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    border_ = border;
    update();
}

void Frame::CaptionChanged(const QString& shown) {
    setTitle(shown);
    DeriveSpokenName(Caption());
}

void Frame::paintEvent(QPaintEvent* event) {
    if (border_ != 0) QGroupBox::paintEvent(event);
}

}  // namespace quarv::forms
