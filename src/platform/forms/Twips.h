// Twips: the length unit of forms and controls. 1440 to the inch; 15 to the device-independent
// pixel at any scale of the screen. Only geometry of widgets is rounded to pixels, never a length
// that a caller reads back.
#pragma once

#include <algorithm>
#include <cmath>

#include "platform/drawing/TwipsPerPixel.h"

namespace quarv::forms {

using drawing::TwipsPerPixel;

inline constexpr double ToTwips(double pixels) {
    return pixels * TwipsPerPixel;
}

// Nearest whole pixel, kept inside what a widget can have.
inline int ToPixels(double twips) {
    constexpr double Limit = (1 << 24) - 1;
    return static_cast<int>(std::lround(std::clamp(twips / TwipsPerPixel, -Limit, Limit)));
}

}  // namespace quarv::forms
