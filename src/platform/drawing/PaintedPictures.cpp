#include "platform/drawing/PaintedPictures.h"

#include <cmath>

#include "base/RuntimeError.h"
#include "platform/drawing/RasterOperation.h"
#include "platform/drawing/TwipsPerPixel.h"

namespace quarv::drawing {

namespace {

// Twips given, pixels back.
double Length(double twips) {
    if (!std::isfinite(twips)) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    return twips / TwipsPerPixel;
}

double LengthOr(const Value& twips, double pixels) {
    return twips.IsEmpty() ? pixels : Length(twips.ToDouble());
}

// A raster operation combines whole pixels, so there is no transparency in it.
PictureRef WithoutAlpha(const PictureRef& picture) {
    if (!picture->Image().hasAlphaChannel()) return picture;
    return std::make_shared<Picture>(picture->Image().convertToFormat(QImage::Format_RGB32));
}

bool IsOpaque(const Picture& picture) {
    return picture.Type() == PictureType::Bitmap && !picture.Image().hasAlphaChannel();
}

}  // namespace

PaintedPictures::Painted PaintedPictures::Understand(const PaintPictureArguments& arguments) {
    if (!HasPicture(arguments.picture)) throw RuntimeError(RuntimeError::ObjectNotSet);
    Painted painted;
    painted.picture = arguments.picture;
    const QSizeF size = painted.picture->Size();
    painted.source = QRectF(LengthOr(arguments.X2, 0), LengthOr(arguments.Y2, 0),
                            LengthOr(arguments.Width2, size.width()),
                            LengthOr(arguments.Height2, size.height()));
    if (painted.source.isEmpty()) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    painted.target = QRectF(Length(arguments.X1), Length(arguments.Y1),
                            LengthOr(arguments.Width1, painted.source.width()),
                            LengthOr(arguments.Height1, painted.source.height()));
    const auto mode =
        CompositionModeOf(arguments.Opcode.IsEmpty() ? SourceCopy : arguments.Opcode.ToInteger());
    const bool combined = painted.picture->Type() == PictureType::Bitmap &&
                          mode != QPainter::CompositionMode_SourceOver;
    if (!combined) return painted;
    painted.mode = mode;
    painted.picture = WithoutAlpha(painted.picture);
    return painted;
}

void PaintedPictures::Add(const PaintPictureArguments& arguments) {
    Painted added = Understand(arguments);
    const QRectF whole(QPointF(), added.picture->Size());
    // What an opaque picture covers is gone; a caller that paints again and again keeps one.
    if (added.mode == QPainter::CompositionMode_SourceOver && IsOpaque(*added.picture) &&
        whole.contains(added.source)) {
        const QRectF covered = added.target.normalized();
        std::erase_if(painted_, [&covered](const Painted& earlier) {
            return covered.contains(earlier.target.normalized());
        });
    }
    painted_.push_back(std::move(added));
}

void PaintedPictures::Paint(QPainter& painter) const {
    for (const Painted& painted : painted_) {
        painter.save();
        painter.setCompositionMode(painted.mode);
        painted.picture->Paint(painter, painted.target, painted.source);
        painter.restore();
    }
}

}  // namespace quarv::drawing
