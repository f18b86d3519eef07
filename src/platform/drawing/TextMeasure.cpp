#include "platform/drawing/TextMeasure.h"

#include <QFontMetricsF>

namespace quarv::drawing {

QSizeF MeasureText(const QFont& font, const QString& text) {
    const QFontMetricsF metrics(font);
    return {metrics.horizontalAdvance(text), metrics.height()};
}

}  // namespace quarv::drawing
