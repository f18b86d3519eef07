// FilledPicture: pictures of one colour, and the palette whose colours paint tests name.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPalette>

#include "platform/drawing/Picture.h"

namespace quarv::test {

inline QImage FilledImage(const QColor& color, const QSize& size) {
    QImage image(size, color.alpha() == 255 ? QImage::Format_RGB32 : QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

// A bitmap.
inline drawing::PictureRef FilledPicture(const QColor& color, const QSize& size = {16, 16}) {
    return std::make_shared<drawing::Picture>(FilledImage(color, size));
}

// Every colour of the edges is another; the face is the classic one.
inline QPalette ClassicPalette() {
    QPalette palette;
    palette.setColor(QPalette::Button, QColor(236, 233, 216));
    palette.setColor(QPalette::Light, QColor(255, 255, 255));
    palette.setColor(QPalette::Midlight, QColor(241, 239, 226));
    palette.setColor(QPalette::Mid, QColor(172, 168, 153));
    palette.setColor(QPalette::Shadow, QColor(113, 111, 100));
    palette.setColor(QPalette::ButtonText, QColor(0, 0, 0));
    return palette;
}

inline const QColor Face(236, 233, 216);
inline const QColor Highlight(255, 255, 255);
inline const QColor LightEdge(241, 239, 226);
inline const QColor Shadow(172, 168, 153);
inline const QColor DarkShadow(113, 111, 100);

}  // namespace quarv::test
