// PaneFont: the font that every pane of the inspectors shows its texts in.
#pragma once

#include <QString>

namespace quarv {

inline QString PaneFont() {
    return QStringLiteral("Microsoft Sans Serif");
}

}  // namespace quarv
