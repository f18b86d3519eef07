// DrawState: a picture as a control shows it in its state, normal or greyed. Codes as documented
// for the Win32 function of this name.
#pragma once

#include <QPalette>
#include <QRect>

class QPainter;

namespace quarv::drawing {

class Picture;

// What kind of image is drawn; one that draws itself is complex.
enum ImageType : unsigned {
    DST_COMPLEX = 0x0000,
    DST_ICON = 0x0003,
    DST_BITMAP = 0x0004,
};

// The state that it is drawn in, combined with an image type.
enum ImageState : unsigned {
    DSS_NORMAL = 0x0000,
    DSS_DISABLED = 0x0020,
};

// The image type of a picture; DST_COMPLEX for one that is neither bitmap nor icon.
unsigned ImageTypeOf(const Picture& picture);

// Draws the picture over `bounds` (pixels). `flags` is an image type and a state; disabled, the
// picture loses its hues and fades half into the palette's button face. Raises InvalidProcedureCall
// where the image type is not the picture's or the state is unknown.
void DrawState(QPainter& painter, const Picture& picture, const QRect& bounds, unsigned flags,
               const QPalette& palette);

}  // namespace quarv::drawing
