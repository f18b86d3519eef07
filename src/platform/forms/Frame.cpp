#include "platform/forms/Frame.h"

namespace quarv::forms {

Frame::Frame(QWidget* container, const QString& name)
    : QGroupBox(container), Control(this, container, name), Bordered(1) {
    RefreshSpokenName();
}

void Frame::CaptionChanged(const QString& shown) {
    setTitle(shown);
    DeriveSpokenName(Caption());
}

void Frame::paintEvent(QPaintEvent* event) {
    if (BorderStyle() != 0) QGroupBox::paintEvent(event);
}

}  // namespace quarv::forms
