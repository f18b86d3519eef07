#include "platform/forms/PictureBox.h"

#include <QPainter>

#include "base/RuntimeError.h"

namespace quarv::forms {

PictureBox::PictureBox(QWidget* container, const QString& name)
    : QWidget(container), Control(this, container, name) {
    RefreshSpokenName();
}

void PictureBox::SetPicture(const QIcon& picture) {
    picture_ = picture;
    update();
}

void PictureBox::SetBorderStyle(int border) {
    if (border < 0 || border > 1) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    border_ = border;
    update();
}

void PictureBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!picture_.isNull())
        picture_.paint(&painter, rect(), Qt::AlignCenter,
                       isEnabled() ? QIcon::Normal : QIcon::Disabled);
    if (border_ == 0) return;
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace quarv::forms
