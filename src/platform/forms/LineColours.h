// LineColours: the colour of each kind of text in a box, made for the background of its palette so
// that it can be read on a light desktop and on a dark one. Knows no widget.
#pragma once

#include <QColor>
#include <array>

#include "platform/forms/LineScanner.h"

namespace quarv::forms {

struct LineColours {
    // By LineKind; no valid colour for Plain, which keeps the box's own.
    std::array<QColor, LineKinds> ofKind;
};

// Each with a contrast to `background` of at least 4.5 to 1.
LineColours LineColoursOn(const QColor& background);

}  // namespace quarv::forms
