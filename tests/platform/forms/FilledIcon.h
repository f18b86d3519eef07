// FilledIcon: a picture of one colour, 16 pixels wide and high.
#pragma once

#include <QIcon>
#include <QPixmap>

namespace quarv::forms {

inline QIcon FilledIcon(Qt::GlobalColor color) {
    QPixmap pixmap(16, 16);
    pixmap.fill(color);
    return QIcon(pixmap);
}

}  // namespace quarv::forms
