// SystemColors: colours as the system keeps them: 32 bits, either 0x00BBGGRR or 0x80000000 plus the
// index of a system colour. System colours follow the palette, so a dark desktop looks right.
#pragma once

#include <QColor>
#include <QPalette>

namespace quarv::drawing {

// Indexes of the system colours in use.
enum class SystemColor : quint32 {
    ScrollBar = 0,
    Desktop = 1,
    WindowBackground = 5,
    WindowText = 8,
    Highlight = 13,
    HighlightText = 14,
    ButtonFace = 15,
    ButtonShadow = 16,
    GrayText = 17,
    ButtonText = 18,
    ButtonHighlight = 20,
    DarkShadow = 21,
    Light = 22,
    InfoText = 23,
    InfoBackground = 24,
};

// The stored form of a system colour: 0x8000000F for button faces.
constexpr quint32 Stored(SystemColor color) {
    return 0x80000000U | static_cast<quint32>(color);
}

// The colour to paint with. An index that names no colour of the palette gives the button face.
QColor TranslateColor(quint32 stored, const QPalette& palette);

}  // namespace quarv::drawing
