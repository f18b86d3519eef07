// Picture: an immutable picture that any number of controls share by reference, in a Value or a
// property bag too. It knows its kind and its size and paints itself, crisp at any scale of the
// screen as far as its source allows. It knows no control.
#pragma once

#include <QIcon>
#include <QImage>
#include <QPicture>
#include <QRectF>
#include <QSizeF>
#include <memory>

#include "base/Object.h"
#include "base/Value.h"

class QPainter;

namespace quarv::drawing {

class Picture;
// The null reference is no picture.
using PictureRef = std::shared_ptr<Picture>;

enum class PictureType { None, Bitmap, Icon, Other };

class Picture final : public Object {
  public:
    // An empty picture.
    Picture() = default;
    // Bitmaps: as large as their pixels divided by their device pixel ratio. A null one is empty.
    explicit Picture(const QImage& image);
    explicit Picture(const QPixmap& pixmap) : Picture(pixmap.toImage()) {}
    // An icon, of which `pixels` (device-independent) is the size. A null icon is empty.
    Picture(const QIcon& icon, const QSize& pixels);
    // A recorded drawing that fills `pixels` from its corner: of the type Other.
    Picture(const QPicture& drawing, const QSize& pixels);

    PictureType Type() const { return type_; }
    // Twips; 0 where the picture is empty.
    double Width() const;
    double Height() const;
    // Device-independent pixels.
    QSizeF Size() const { return size_; }
    // The bitmap itself; null for the other types.
    const QImage& Image() const { return image_; }

    // At its own size. The corner moves to the nearest pixel of the screen.
    void Paint(QPainter& painter, const QPointF& topLeft) const;
    // The part `source`, in pixels of the picture, stretched over `target`; a target of negative
    // width or height shows the part mirrored.
    void Paint(QPainter& painter, const QRectF& target, const QRectF& source) const;
    // On a transparent ground, with that many pixels for each of the picture's own.
    QImage Render(qreal devicePixelRatio) const;

  private:
    void PaintWhole(QPainter& painter) const;

    PictureType type_ = PictureType::None;
    QSizeF size_;
    QImage image_;
    QIcon icon_;
    QPicture drawing_;
};

// False for no picture and for an empty one.
bool HasPicture(const PictureRef& picture);

// The picture that `value` refers to, null where it is empty or no object. Raises TypeMismatch for
// everything else.
PictureRef PictureIn(const Value& value);

}  // namespace quarv::drawing
