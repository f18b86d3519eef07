// PathIcon: a picture drawn from paths when it is painted, so that it is crisp at any scale,
// follows the desktop's palette and costs nothing at start-up. Whoever uses the icon owns it.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPen>
#include <QSize>
#include <functional>

class QPainter;

namespace quarv {

// What a picture is drawn with: paper and line follow the palette; accents are the drawing's own.
struct PathInks {
    QColor paper;
    QPen line;
    QColor words;  // on the face of a button
};

// Draws within a rectangle of as many units as the icon has, antialiased. Where a unit is a pixel,
// whole and half units are crisp.
using DrawPathIcon = std::function<void(QPainter& painter, const PathInks& inks)>;

QIcon MakePathIcon(DrawPathIcon draw, const QSize& units = {16, 16});

}  // namespace quarv
