#include "platform/forms/FramePlusPainter.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace quarv::forms {

namespace {

constexpr qreal Radius = 4;
constexpr int CornerRows = 5;
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

void PaintBand(QPainter& painter, const QRect& bounds, const QPainterPath& shape,
               const FramePlusLook& look) {
    const QColor face = look.palette.color(QPalette::Window);
    const QColor ink = look.palette.color(QPalette::WindowText);
    const QRect band(bounds.left(), bounds.top(), bounds.width(), look.bandHeight);
    painter.save();
    painter.setClipRect(band);
    painter.fillPath(shape, Blend(face, ink, 0.07));
    PaintTitle(painter, band, look);
    painter.restore();
    painter.setPen(Blend(face, ink, 0.15));
    painter.drawLine(QPointF(bounds.left() + 1.5, band.bottom() + 0.5),
                     QPointF(bounds.right() - 0.5, band.bottom() + 0.5));
}

}  // namespace

void PaintFramePlus(QPainter& painter, const QRect& bounds, const FramePlusLook& look) {
    const QColor face = look.palette.color(QPalette::Window);
    const QColor line = Blend(face, look.palette.color(QPalette::WindowText), 0.25);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(bounds).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
    // Only the rows that hold the corners take the slow way of smooth edges.
    const QRect middle = bounds.adjusted(0, CornerRows, 0, -CornerRows);
    const QRect top =
        middle.isValid() ? bounds.adjusted(0, 0, 0, -middle.height() - CornerRows) : bounds;
    const QRect bottom =
        middle.isValid() ? top.translated(0, middle.bottom() + 1 - top.top()) : QRect();
    const auto onEdges = [&painter, &top, &bottom](const auto& paint) {
        for (const QRect& rows : {top, bottom}) {
            painter.save();
            painter.setClipRect(rows);
            paint();
            painter.restore();
        }
    };
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(middle, face);
    onEdges([&] { painter.fillPath(shape, face); });
    if (!look.caption.isEmpty()) PaintBand(painter, bounds, shape, look);
    onEdges([&] { painter.strokePath(shape, QPen(line, 1)); });
    painter.fillRect(QRect(middle.topLeft(), middle.bottomLeft()), line);
    painter.fillRect(QRect(middle.topRight(), middle.bottomRight()), line);
}

}  // namespace quarv::forms
