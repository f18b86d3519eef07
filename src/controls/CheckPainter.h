// The look of RCheckbox as a function of painter, place and one state struct, so that a grid can
// paint many check boxes without a control for each.
#pragma once

#include <QPointF>
#include <QString>

class QPainter;

namespace quarv {

// Twips per pixel of the screen, as 16-bit integers.
struct CheckMetrics {
    qint16 twipsPerPixelX = 15;
    qint16 twipsPerPixelY = 15;
};

struct CheckLook {
    bool pressed = false;
    bool checked = false;
    bool enabled = true;
    QString caption = {};  // literal; printed in the painter's own font and pen
};

// Draws with the top left corner at `corner`, in twips: the box one pixel further in, the tick
// four, the caption right of the box. Nothing is cleared. Raises Overflow, with the box drawn,
// where the tick's four pixels are beyond 32767 twips.
void PaintCheck(QPainter& painter, const QPointF& corner, const CheckMetrics& metrics,
                const CheckLook& look);

}  // namespace quarv
