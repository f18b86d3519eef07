// Fonts: the one place that decides which font stands for a name that the system uses.
#pragma once

#include <QFont>
#include <QString>

namespace quarv::drawing {

// `name` where it is installed, else a font of its widths where one is, else the desktop's general
// or fixed-pitch font. `points` above 0.
QFont FontNamed(const QString& name, double points);

}  // namespace quarv::drawing
