// StockPictures: the small pictures that the system's own controls draw with. They are drawn from
// paths when painted, follow the desktop's palette and are shared by all who ask for them.
#pragma once

#include <QFont>

#include "platform/drawing/Picture.h"

namespace quarv {

// The box of a check box, 13 x 13 pixels, as it stands and while it is pressed.
drawing::PictureRef EmptyBoxPicture();
drawing::PictureRef PressedBoxPicture();
// The tick, 7 x 7 pixels: fits inside a box when drawn three pixels further in than the box.
drawing::PictureRef CheckMarkPicture();
// A triangle that points right at the current row of a grid, 9 x 9 pixels.
drawing::PictureRef CurrentRowPicture();
// Three dots, 8 x 8 pixels: "more of this".
drawing::PictureRef EllipsisPicture();
// The words as a button carries them, for buttons that show pictures alone; as large as the words
// in that font. Each call makes another picture.
drawing::PictureRef WordsPicture(const QString& words, const QFont& font);

}  // namespace quarv
