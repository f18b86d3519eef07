// PaintedPictures: what a caller painted onto a control by its PaintPicture. The control owns it,
// paints it above its own drawing, and clears it when it draws itself anew.
#pragma once

#include <QPainter>
#include <QRectF>
#include <vector>

#include "base/Value.h"
#include "platform/drawing/Picture.h"

namespace quarv::drawing {

// The arguments of PaintPicture as they came. Lengths are twips; an empty Value is one left out.
struct PaintPictureArguments {
    PictureRef picture = {};
    float X1 = 0;  // where it goes
    float Y1 = 0;
    // The size it gets there, below 0 mirrored; its part's own size where left out.
    Value Width1 = {};
    Value Height1 = {};
    Value X2 = {};  // which part of it: all from its corner where left out
    Value Y2 = {};
    Value Width2 = {};
    Value Height2 = {};
    Value Opcode = {};  // a raster operation, for bitmaps only; a plain copy where left out
};

class PaintedPictures {
  public:
    // Raises ObjectNotSet for no picture or an empty one, InvalidProcedureCall for an unknown code,
    // a length that is no number and a part without a size, and as Value::ToDouble does.
    void Add(const PaintPictureArguments& arguments);
    void Clear() { painted_.clear(); }

    // In the order in which they came; the painter counts device-independent pixels.
    void Paint(QPainter& painter) const;

  private:
    struct Painted {
        PictureRef picture;
        QRectF target;  // pixels
        QRectF source;
        QPainter::CompositionMode mode = QPainter::CompositionMode_SourceOver;
    };

    static Painted Understand(const PaintPictureArguments& arguments);

    std::vector<Painted> painted_;
};

}  // namespace quarv::drawing
