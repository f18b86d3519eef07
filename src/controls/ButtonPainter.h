// The look of RButton as a function of painter, rectangle and one state struct.
#pragma once

#include <QColor>
#include <QPalette>
#include <QRect>

#include "platform/drawing/Picture.h"
#include "platform/drawing/SystemColors.h"

class QPainter;

namespace quarv {

struct ButtonLook {
    drawing::PictureRef picture;      // without one nothing is drawn
    drawing::PictureRef pictureDown;  // stands in for it while `down`, where there is one
    quint32 backColor = drawing::Stored(drawing::SystemColor::ButtonFace);
    QPalette palette;
    bool down = false;
    bool flat = false;  // blue-grey face and navy outline in place of edges
    bool enabled = true;
    bool hovered = false;
    bool pressed = false;
    bool focused = false;
};

// `face` in pixels.
void PaintButton(QPainter& painter, const QRect& face, const ButtonLook& look);

// Half way to white; halves round to the even neighbour.
QColor Lightened(const QColor& color);

}  // namespace quarv
