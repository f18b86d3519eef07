#include "platform/drawing/DrawState.h"

#include <QPainter>
#include <algorithm>

#include "base/RuntimeError.h"
#include "platform/drawing/Picture.h"
#include "platform/drawing/SystemColors.h"

namespace quarv::drawing {

namespace {

constexpr unsigned TypeMask = 0x000F;

QRgb GreyedPixel(QRgb pixel, const QColor& face) {
    const int gray = qGray(pixel);
    return qRgba((gray + face.red()) / 2, (gray + face.green()) / 2, (gray + face.blue()) / 2,
                 qAlpha(pixel));
}

QImage Greyed(QImage image, const QColor& face) {
    image.convertTo(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::transform(row, row + image.width(), row,
                       [&face](QRgb pixel) { return GreyedPixel(pixel, face); });
    }
    return image;
}

}  // namespace

unsigned ImageTypeOf(const Picture& picture) {
    switch (picture.Type()) {
        case PictureType::Bitmap:
            return DST_BITMAP;
        case PictureType::Icon:
            return DST_ICON;
        default:
            return DST_COMPLEX;
    }
}

void DrawState(QPainter& painter, const Picture& picture, const QRect& bounds, unsigned flags,
               const QPalette& palette) {
    const unsigned state = flags & ~TypeMask;
    if ((flags & TypeMask) != ImageTypeOf(picture) ||
        (state != DSS_NORMAL && state != DSS_DISABLED))
        throw RuntimeError(RuntimeError::InvalidProcedureCall);
    const QRectF whole(QPointF(), picture.Size());
    if (state == DSS_NORMAL) {
        picture.Paint(painter, bounds, whole);
        return;
    }
    const QColor face = TranslateColor(Stored(SystemColor::ButtonFace), palette);
    const qreal scale = std::max(1.0, painter.deviceTransform().m11());
    const QImage greyed = Greyed(picture.Render(scale), face);
    if (!greyed.isNull()) Picture(greyed).Paint(painter, bounds, whole);
}

}  // namespace quarv::drawing
