#include "platform/drawing/SystemColors.h"

namespace quarv::drawing {

namespace {

constexpr quint32 SystemFlag = 0x80000000U;

struct Entry {
    SystemColor color;
    QPalette::ColorGroup group;
    QPalette::ColorRole role;
};

constexpr Entry Table[] = {
    {SystemColor::ScrollBar, QPalette::Active, QPalette::Window},
    {SystemColor::Desktop, QPalette::Active, QPalette::Window},
    {SystemColor::WindowBackground, QPalette::Active, QPalette::Base},
    {SystemColor::WindowText, QPalette::Active, QPalette::Text},
    {SystemColor::Highlight, QPalette::Active, QPalette::Highlight},
    {SystemColor::HighlightText, QPalette::Active, QPalette::HighlightedText},
    {SystemColor::ButtonFace, QPalette::Active, QPalette::Button},
    {SystemColor::ButtonShadow, QPalette::Active, QPalette::Mid},
    {SystemColor::GrayText, QPalette::Disabled, QPalette::Text},
    {SystemColor::ButtonText, QPalette::Active, QPalette::ButtonText},
    {SystemColor::ButtonHighlight, QPalette::Active, QPalette::Light},
    {SystemColor::DarkShadow, QPalette::Active, QPalette::Shadow},
    {SystemColor::Light, QPalette::Active, QPalette::Midlight},
    {SystemColor::InfoText, QPalette::Active, QPalette::ToolTipText},
    {SystemColor::InfoBackground, QPalette::Active, QPalette::ToolTipBase},
};

}  // namespace

QColor TranslateColor(quint32 stored, const QPalette& palette) {
    if ((stored & SystemFlag) == 0)
        return QColor(static_cast<int>(stored & 0xFF), static_cast<int>(stored >> 8 & 0xFF),
                      static_cast<int>(stored >> 16 & 0xFF));
    const quint32 index = stored & ~SystemFlag;
    for (const Entry& entry : Table)
        if (static_cast<quint32>(entry.color) == index)
            return palette.color(entry.group, entry.role);
    return palette.color(QPalette::Active, QPalette::Button);
}

}  // namespace quarv::drawing
