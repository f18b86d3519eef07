// PlaceInPixels: layouts count device-independent pixels from their container's corner; controls
// count twips.
#pragma once

#include "platform/forms/Control.h"
#include "platform/forms/Twips.h"

namespace quarv {

inline void PlaceInPixels(forms::Control& control, int left, int top, int width, int height) {
    using forms::ToTwips;
    control.Move(ToTwips(left), ToTwips(top), ToTwips(width), ToTwips(height));
}

}  // namespace quarv
