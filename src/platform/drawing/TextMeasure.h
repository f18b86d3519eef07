// TextMeasure: how much room a text takes in a font, in device-independent pixels.
#pragma once

#include <QFont>
#include <QSizeF>
#include <QString>

namespace quarv::drawing {

// One line: the width of the text as painted, the height of the font's line.
QSizeF MeasureText(const QFont& font, const QString& text);

}  // namespace quarv::drawing
