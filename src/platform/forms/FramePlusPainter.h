// The look of FramePlus as a function of painter, rectangle and one state struct.
#pragma once

#include <QPalette>
#include <QRect>
#include <QString>

class QPainter;

namespace quarv::forms {

struct FramePlusLook {
    QString caption;  // literal; none leaves the title band out
    QPalette palette;
    int bandHeight = 0;  // pixels
    bool enabled = true;
    bool rightToLeft = false;
};

void PaintFramePlus(QPainter& painter, const QRect& bounds, const FramePlusLook& look);

}  // namespace quarv::forms
