#include "platform/forms/BoxIconPainter.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace quarv::forms {

namespace {

constexpr qreal Units = 32;  // the square's side, in which the signs are drawn
constexpr qreal DotRadius = 2.1;
constexpr qreal PenWidth = 3.2;
constexpr QRgb Blue = 0xff2f6fb3;
constexpr QRgb Red = 0xffc62f2f;

// A sign in white on a coloured disc: strokes, and a dot where the radius is not 0.
struct Sign {
    QRgb disc;
    QPainterPath strokes;
    QPointF dot;
    qreal dotRadius = 0;
};

Sign InformationSign() {
    QPainterPath stem(QPointF(16, 14.5));
    stem.lineTo(16, 23);
    return {Blue, stem, {16, 8.6}, DotRadius};
}

Sign QuestionSign() {
    const QRectF bow(11.4, 7, 9.2, 9.2);
    QPainterPath hook;
    hook.arcMoveTo(bow, 175);
    hook.arcTo(bow, 175, -220);
    hook.cubicTo(17.2, 16.8, 16, 16.9, 16, 19.4);
    return {Blue, hook, {16, 24.2}, DotRadius};
}

Sign CriticalSign() {
    QPainterPath cross(QPointF(11, 11));
    cross.lineTo(21, 21);
    cross.moveTo(21, 11);
    cross.lineTo(11, 21);
    return {Red, cross, {}, 0};
}

Sign SignOf(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Question:
            return QuestionSign();
        case BoxIcon::Critical:
            return CriticalSign();
        default:
            return InformationSign();
    }
}

}  // namespace

void PaintBoxIcon(QPainter& painter, const QRectF& bounds, BoxIcon icon) {
    if (icon == BoxIcon::None) return;
    const Sign sign = SignOf(icon);
    const qreal side = std::min(bounds.width(), bounds.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(bounds.center() - QPointF(side / 2, side / 2));
    painter.scale(side / Units, side / Units);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(sign.disc));
    painter.drawEllipse(QRectF(1, 1, Units - 2, Units - 2));
    painter.setBrush(Qt::white);
    if (sign.dotRadius > 0) painter.drawEllipse(sign.dot, sign.dotRadius, sign.dotRadius);
    painter.strokePath(sign.strokes, QPen(Qt::white, PenWidth, Qt::SolidLine, Qt::RoundCap));
    painter.restore();
}

}  // namespace quarv::forms
