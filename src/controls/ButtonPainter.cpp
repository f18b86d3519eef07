#include "controls/ButtonPainter.h"

#include <QPainter>
#include <cmath>

#include "platform/drawing/DrawEdge.h"
#include "platform/drawing/DrawState.h"

namespace quarv {

namespace {

using drawing::Picture;
using drawing::Stored;
using drawing::SystemColor;
using drawing::TranslateColor;

constexpr QRgb FlatHovered = qRgb(173, 173, 209);
constexpr QRgb FlatPressed = qRgb(128, 128, 192);
constexpr QRgb FlatOutline = qRgb(0, 0, 128);
constexpr int PressedShift = 2;
constexpr int FocusInset = 3;

int HalfWayToWhite(int channel) {
    const int sum = channel + 255;
    const int half = sum / 2;
    return sum % 2 == 0 ? half : half + half % 2;
}

QColor FaceColor(const ButtonLook& look) {
    if (look.down)
        return Lightened(look.flat ? QColor(FlatHovered)
                                   : TranslateColor(Stored(SystemColor::ButtonFace), look.palette));
    if (!look.flat || !look.hovered) return TranslateColor(look.backColor, look.palette);
    return QColor(look.pressed ? FlatPressed : FlatHovered);
}

void DrawOutline(QPainter& painter, const QRect& face, const QColor& color) {
    painter.fillRect(QRect(face.topLeft(), face.topRight()), color);
    painter.fillRect(QRect(face.bottomLeft(), face.bottomRight()), color);
    painter.fillRect(QRect(face.topLeft(), face.bottomLeft()), color);
    painter.fillRect(QRect(face.topRight(), face.bottomRight()), color);
}

void DrawRim(QPainter& painter, const QRect& face, const ButtonLook& look) {
    if (!look.hovered && !look.down) return;
    if (look.flat && look.hovered) {
        DrawOutline(painter, face, QColor(FlatOutline));
        return;
    }
    const bool sunken = look.pressed || look.down;
    drawing::DrawEdge(painter, face, sunken ? drawing::BDR_SUNKENOUTER : drawing::BDR_RAISEDINNER,
                      drawing::BF_RECT, look.palette);
}

// Dotted, as is usual for a button that draws itself.
void DrawFocusMark(QPainter& painter, const QRect& face, const QColor& faceColor) {
    const QRectF mark = QRectF(face).adjusted(FocusInset + 0.5, FocusInset + 0.5, -FocusInset - 0.5,
                                              -FocusInset - 0.5);
    if (mark.isEmpty()) return;
    // The latched and flat faces are light whatever the palette.
    QPen pen(qGray(faceColor.rgb()) < 128 ? Qt::white : Qt::black, 1, Qt::CustomDashLine,
             Qt::FlatCap, Qt::MiterJoin);
    pen.setDashPattern({1, 1});
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(mark);
}

void PaintEnabled(QPainter& painter, const QRect& face, const QPointF& place,
                  const Picture& picture, const ButtonLook& look) {
    const QColor color = FaceColor(look);
    painter.fillRect(face, color);
    DrawRim(painter, face, look);
    const int shift = look.pressed ? PressedShift : 0;
    picture.Paint(painter, place + QPointF(shift, shift));
    if (look.focused) DrawFocusMark(painter, face, color);
}

void PaintDisabled(QPainter& painter, const QRect& face, const QPointF& place,
                   const Picture& picture, const ButtonLook& look) {
    painter.fillRect(face, TranslateColor(Stored(SystemColor::ButtonFace), look.palette));
    const QPoint pixels(static_cast<int>(std::floor(place.x() + 0.5)),
                        static_cast<int>(std::floor(place.y() + 0.5)));
    drawing::DrawState(painter, picture, QRect(pixels, picture.Size().toSize()),
                       drawing::ImageTypeOf(picture) | drawing::DSS_DISABLED, look.palette);
}

}  // namespace

QColor Lightened(const QColor& color) {
    return {HalfWayToWhite(color.red()), HalfWayToWhite(color.green()),
            HalfWayToWhite(color.blue())};
}

void PaintButton(QPainter& painter, const QRect& face, const ButtonLook& look) {
    // A picture for the latched state alone does not make a button visible.
    if (!drawing::HasPicture(look.picture)) return;
    const bool latched = look.down && drawing::HasPicture(look.pictureDown);
    const Picture& picture = latched ? *look.pictureDown : *look.picture;
    const QSizeF room = QSizeF(face.size()) - picture.Size();
    const QPointF place = face.topLeft() + QPointF(room.width() / 2, room.height() / 2);
    if (look.enabled)
        PaintEnabled(painter, face, place, picture, look);
    else
        PaintDisabled(painter, face, place, picture, look);
}

}  // namespace quarv
