#include "platform/forms/PictureBox.h"

#include <QPainter>

namespace quarv::forms {

PictureBox::PictureBox(QWidget* container, const QString& name)
    : QWidget(container), Control(this, container, name), Bordered(0) {
    RefreshSpokenName();
}

void PictureBox::SetPicture(const QIcon& picture) {
    picture_ = picture;
    update();
}

void PictureBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!picture_.isNull())
        picture_.paint(&painter, rect(), Qt::AlignCenter,
                       isEnabled() ? QIcon::Normal : QIcon::Disabled);
    if (BorderStyle() == 0) return;
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace quarv::forms
