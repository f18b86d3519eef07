// PathIcon: a picture drawn from paths when it is painted, so that it is crisp at any scale,
// follows the desktop's palette and costs nothing at start-up. Whoever uses the icon owns it.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPen>

class QPainter;

namespace quarv {

// What a picture is drawn with: paper and line follow the palette; accents are the drawing's own.
struct PathInks {
    QColor paper;
    QPen line;
};

// Draws within a square of as many units as the icon has, antialiased. Where a unit is a pixel,
// whole and half units are crisp.
using DrawPathIcon = void (*)(QPainter& painter, const PathInks& inks);

QIcon MakePathIcon(DrawPathIcon draw, int units = 16);

}  // namespace quarv
