#include "platform/forms/FramePlusPainter.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace quarv::forms {

namespace {

constexpr qreal Radius = 4;
constexpr int TitleMargin = 8;

// A colour between two, so that the panel fits a light and a dark palette alike.
QColor Blend(const QColor& a, const QColor& b, qreal share) {
    return QColor::fromRgbF(static_cast<float>(a.redF() + (b.redF() - a.redF()) * share),
                            static_cast<float>(a.greenF() + (b.greenF() - a.greenF()) * share),
                            static_cast<float>(a.blueF() + (b.blueF() - a.blueF()) * share));
}

// The band keeps its height, so a taller font is made to fit it.
QFont TitleFont(QFont font, int bandHeight) {
    font.setWeight(QFont::DemiBold);
    const QFontMetricsF metrics(font);
    if (metrics.height() > bandHeight)
        font.setPixelSize(std::max(
            1, static_cast<int>(QFontInfo(font).pixelSize() * bandHeight / metrics.height())));
    return font;
}

void PaintTitle(QPainter& painter, const QRect& band, const FramePlusLook& look) {
    const QFont font = TitleFont(painter.font(), band.height());
    painter.setFont(font);
    painter.setPen(look.palette.color(look.enabled ? QPalette::Active : QPalette::Disabled,
                                      QPalette::WindowText));
    const QRect text = band.adjusted(TitleMargin, 0, -TitleMargin, 0);
    const QString shown = QFontMetrics(font).elidedText(look.caption, Qt::ElideRight, text.width());
    const auto side = look.rightToLeft ? Qt::AlignRight : Qt::AlignLeft;
    painter.drawText(text, static_cast<int>(side | Qt::AlignVCenter | Qt::TextSingleLine), shown);
}

}  // namespace

void PaintFramePlus(QPainter& painter, const QRect& bounds, const FramePlusLook& look) {
    const QColor face = look.palette.color(QPalette::Window);
    const QColor ink = look.palette.color(QPalette::WindowText);
    const QColor line = Blend(face, ink, 0.25);
    const QRectF outline = QRectF(bounds).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath shape;
    shape.addRoundedRect(outline, Radius, Radius);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(shape, face);
    if (!look.caption.isEmpty()) {
        const QRect band(bounds.left(), bounds.top(), bounds.width(), look.bandHeight);
        painter.save();
        painter.setClipRect(band);
        painter.fillPath(shape, Blend(face, ink, 0.07));
        PaintTitle(painter, band, look);
        painter.restore();
        painter.setPen(Blend(face, ink, 0.15));
        const qreal y = band.bottom() + 0.5;
        painter.drawLine(QPointF(outline.left() + 1, y), QPointF(outline.right() - 1, y));
    }
    painter.strokePath(shape, QPen(line, 1));
}

}  // namespace quarv::forms
