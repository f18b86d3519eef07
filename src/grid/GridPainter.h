// GridPainter: the look of a grid as a function of painter, area and one struct: header, marker
// band, cells and the lines between them. Only what lies in the area is asked for and drawn.
#pragma once

#include <QPalette>
#include <exception>
#include <functional>

#include "grid/GridGeometry.h"
#include "grid/GridState.h"
#include "platform/drawing/TextFitter.h"

class QPainter;

namespace quarv {

// What a cell's text leaves free at both of its sides and for the line, in pixels.
inline constexpr int TextMargins = 7;

struct GridLook {
    const GridState& state;
    const GridGeometry& geometry;
    const drawing::TextFitter& fitter;
    const QPalette& palette;
    // Draws the mark of the current row in a rectangle of pixels.
    std::function<void(QPainter&, const QRectF&)> drawMark;
    // Draws a check box, ticked or not, with its top left corner at a point in twips.
    std::function<void(QPainter&, bool, double, double)> drawCheck;
    double checkHeight = 0;  // twips
    QRect corner;            // pixels, between the ends of the scroll bars
};

// The place of a check box within its cell, the same for one that is drawn and one that is edited.
QRectF CheckPlace(const QRectF& cell, double checkHeight);

// `area` in pixels. Gives the first error that a row raised, whose cell stays blank.
std::exception_ptr PaintGrid(QPainter& painter, const QRect& area, const GridLook& look);

}  // namespace quarv
