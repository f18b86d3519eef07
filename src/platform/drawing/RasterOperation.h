// RasterOperation: the codes by which a bitmap's pixels are combined with those that they cover, as
// documented for the Win32 function BitBlt.
#pragma once

#include <QPainter>
#include <QtGlobal>

namespace quarv::drawing {

inline constexpr qint64 SourceCopy = 0x00CC0020;

// How QPainter does what the code says; the source copy lets what is behind a picture's transparent
// parts stand. Raises InvalidProcedureCall for a code without a row in the table; those that need a
// pattern have none.
QPainter::CompositionMode CompositionModeOf(qint64 code);

}  // namespace quarv::drawing
