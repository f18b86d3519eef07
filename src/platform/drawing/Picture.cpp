#include "platform/drawing/Picture.h"

#include <QPainter>
#include <cmath>

#include "base/RuntimeError.h"
#include "platform/drawing/TwipsPerPixel.h"

namespace quarv::drawing {

namespace {

QPointF OnDevicePixel(const QPainter& painter, const QPointF& point) {
    const QTransform& toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale) return point;
    const QPointF there = toDevice.map(point);
    const QPointF nearest(std::floor(there.x() + 0.5), std::floor(there.y() + 0.5));
    return toDevice.inverted().map(nearest);
}

bool IsWhole(qreal scale) {
    return std::abs(scale - std::round(scale)) < 1e-6;
}

}  // namespace

Picture::Picture(const QImage& image) : image_(image) {
    if (image.isNull()) return;
    type_ = PictureType::Bitmap;
    size_ = image.deviceIndependentSize();
}

Picture::Picture(const QIcon& icon, const QSize& pixels) : icon_(icon) {
    if (icon.isNull() || pixels.isEmpty()) return;
    type_ = PictureType::Icon;
    size_ = pixels;
}

Picture::Picture(const QPicture& drawing, const QSize& pixels) : drawing_(drawing) {
    if (drawing.isNull() || pixels.isEmpty()) return;
    type_ = PictureType::Other;
    size_ = pixels;
}

double Picture::Width() const {
    return size_.isEmpty() ? 0 : size_.width() * TwipsPerPixel;
}

double Picture::Height() const {
    return size_.isEmpty() ? 0 : size_.height() * TwipsPerPixel;
}

void Picture::Paint(QPainter& painter, const QPointF& topLeft) const {
    painter.save();
    painter.translate(OnDevicePixel(painter, topLeft));
    PaintWhole(painter);
    painter.restore();
}

void Picture::Paint(QPainter& painter, const QRectF& target, const QRectF& source) const {
    if (source.isEmpty()) return;
    painter.save();
    painter.setClipRect(target.normalized(), Qt::IntersectClip);
    painter.translate(target.topLeft());
    painter.scale(target.width() / source.width(), target.height() / source.height());
    painter.translate(-source.topLeft());
    PaintWhole(painter);
    painter.restore();
}

void Picture::PaintWhole(QPainter& painter) const {
    switch (type_) {
        case PictureType::None:
            return;
        case PictureType::Bitmap: {
            // Pixels repeated whole stay sharp; any other scale would drop or double some of them.
            const QTransform& toDevice = painter.deviceTransform();
            const qreal pixels = image_.devicePixelRatio();
            const bool whole = IsWhole(toDevice.m11() / pixels) && IsWhole(toDevice.m22() / pixels);
            painter.setRenderHint(QPainter::SmoothPixmapTransform, !whole);
            painter.drawImage(QPointF(), image_);
            return;
        }
        case PictureType::Icon:
            icon_.paint(&painter, QRect(QPoint(), size_.toSize()));
            return;
        case PictureType::Other:
            // Playing it back changes the reader's state within it.
            QPicture(drawing_).play(&painter);
            return;
    }
}

QImage Picture::Render(qreal devicePixelRatio) const {
    const QSizeF pixels = size_ * devicePixelRatio;
    QImage image(static_cast<int>(std::ceil(pixels.width())),
                 static_cast<int>(std::ceil(pixels.height())), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return image;
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    PaintWhole(painter);
    return image;
}

bool HasPicture(const PictureRef& picture) {
    return picture != nullptr && picture->Type() != PictureType::None;
}

PictureRef PictureIn(const Value& value) {
    if (value.IsEmpty()) return nullptr;
    const ObjectRef& object = value.ToObject();
    PictureRef picture = std::dynamic_pointer_cast<Picture>(object);
    if (picture == nullptr && object != nullptr) throw RuntimeError(RuntimeError::TypeMismatch);
    return picture;
}

}  // namespace quarv::drawing
