#include "controls/CheckPainter.h"

#include <QPainter>

#include "base/Checked16.h"
#include "controls/StockPictures.h"
#include "platform/drawing/TwipsPerPixel.h"

namespace quarv {

namespace {

constexpr qint16 TickPixels = 4;
constexpr double CaptionGap = 60;

QPointF InPixels(const QPointF& twips) {
    return twips / drawing::TwipsPerPixel;
}

QPointF TickOffset(const CheckMetrics& metrics) {
    return QPointF(Multiply16(TickPixels, metrics.twipsPerPixelX),
                   Multiply16(TickPixels, metrics.twipsPerPixelY));
}

void Print(QPainter& painter, const QPointF& topLeft, const QString& text) {
    // What is beyond the surface is cut there, not by the text's own room.
    constexpr qreal Unbounded = 1 << 20;
    painter.drawText(QRectF(topLeft, QSizeF(Unbounded, Unbounded)),
                     static_cast<int>(Qt::AlignLeft | Qt::AlignTop), text);
}

}  // namespace

void PaintCheck(QPainter& painter, const QPointF& corner, const CheckMetrics& metrics,
                const CheckLook& look) {
    const auto box = look.pressed ? PressedBoxPicture() : EmptyBoxPicture();
    const QPointF boxAt = corner + QPointF(metrics.twipsPerPixelX, metrics.twipsPerPixelY);
    const qreal opacity = painter.opacity();
    if (!look.enabled) painter.setOpacity(opacity * 0.5);
    box->Paint(painter, InPixels(boxAt));
    if (look.checked) CheckMarkPicture()->Paint(painter, InPixels(corner + TickOffset(metrics)));
    painter.setOpacity(opacity);
    if (look.caption.isEmpty()) return;
    Print(painter, InPixels(corner + QPointF(box->Width() + CaptionGap, 0)), look.caption);
}

}  // namespace quarv
