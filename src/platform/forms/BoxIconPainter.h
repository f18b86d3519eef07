// The pictures of message boxes as a function of painter, rectangle and icon, for desktops without
// pictures of their own: drawn from paths, so that they are crisp at any scale.
#pragma once

#include <QRectF>

#include "platform/forms/MsgBox.h"

class QPainter;

namespace quarv::forms {

// Fills the largest square in the middle of `bounds`. Draws nothing for BoxIcon::None.
void PaintBoxIcon(QPainter& painter, const QRectF& bounds, BoxIcon icon);

}  // namespace quarv::forms
