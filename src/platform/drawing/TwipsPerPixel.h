// TwipsPerPixel: how many twips the device-independent pixel has, at any scale of the screen.
#pragma once

namespace quarv::drawing {

inline constexpr double TwipsPerPixel = 15.0;

}  // namespace quarv::drawing
