#include "platform/drawing/DrawEdge.h"

#include <QPainter>

#include "base/RuntimeError.h"
#include "platform/drawing/SystemColors.h"

namespace quarv::drawing {

namespace {

constexpr unsigned OuterRing = BDR_RAISEDOUTER | BDR_SUNKENOUTER;
constexpr unsigned InnerRing = BDR_RAISEDINNER | BDR_SUNKENINNER;

struct Ring {
    unsigned kind;
    SystemColor leftTop;
    SystemColor rightBottom;
};

constexpr Ring Rings[] = {
    {BDR_RAISEDOUTER, SystemColor::Light, SystemColor::DarkShadow},
    {BDR_SUNKENOUTER, SystemColor::ButtonShadow, SystemColor::ButtonHighlight},
    {BDR_RAISEDINNER, SystemColor::ButtonHighlight, SystemColor::ButtonShadow},
    {BDR_SUNKENINNER, SystemColor::DarkShadow, SystemColor::Light},
};

void DrawRing(QPainter& painter, const QRect& r, const Ring& ring, unsigned sides,
              const QPalette& palette) {
    const QColor leftTop = TranslateColor(Stored(ring.leftTop), palette);
    const QColor rightBottom = TranslateColor(Stored(ring.rightBottom), palette);
    if (sides & BF_LEFT) painter.fillRect(QRect(r.topLeft(), r.bottomLeft()), leftTop);
    if (sides & BF_TOP) painter.fillRect(QRect(r.topLeft(), r.topRight()), leftTop);
    if (sides & BF_RIGHT) painter.fillRect(QRect(r.topRight(), r.bottomRight()), rightBottom);
    if (sides & BF_BOTTOM) painter.fillRect(QRect(r.bottomLeft(), r.bottomRight()), rightBottom);
}

// Only the drawn sides of the outer ring take room from the inner one.
QRect Within(const QRect& bounds, unsigned sides) {
    return bounds.adjusted((sides & BF_LEFT) ? 1 : 0, (sides & BF_TOP) ? 1 : 0,
                           (sides & BF_RIGHT) ? -1 : 0, (sides & BF_BOTTOM) ? -1 : 0);
}

}  // namespace

void DrawEdge(QPainter& painter, const QRect& bounds, unsigned edge, unsigned sides,
              const QPalette& palette) {
    if ((edge & ~(OuterRing | InnerRing)) != 0 || (sides & ~unsigned{BF_RECT}) != 0)
        throw RuntimeError(RuntimeError::InvalidProcedureCall);
    QRect free = bounds;
    for (const unsigned place : {OuterRing, InnerRing}) {
        for (const Ring& ring : Rings) {
            if (ring.kind != (edge & place) || free.isEmpty()) continue;
            DrawRing(painter, free, ring, sides, palette);
            free = Within(free, sides);
        }
    }
}

}  // namespace quarv::drawing
