#include "platform/forms/DataCellPainter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quarv::forms {

namespace {

// Of 255 shades of grey: less between two areas is hard to see.
constexpr int VisibleDifference = 16;

QFont Italic(QFont font) {
    font.setItalic(true);
    return font;
}

// A null is fainter than text by this, on whatever ground; the palette's own colour for texts that
// stand for nothing is too dark on some dark desktops.
constexpr float NullOpacity = 0.58F;

QColor TextColour(const DataCellState& state, const QPalette& palette, QPalette::ColorGroup group) {
    if (state.selected) return palette.color(group, QPalette::HighlightedText);
    QColor colour = palette.color(group, QPalette::Text);
    if (state.look == CellLook::Null) colour.setAlphaF(colour.alphaF() * NullOpacity);
    return colour;
}

void DrawText(QPainter& painter, const QRect& cell, const QPointF& start, const QString& text) {
    const bool plain = std::all_of(text.begin(), text.end(), [](QChar c) { return c < u'\x7F'; });
    if (plain) {
        painter.drawText(start, text);
        return;
    }
    // Characters of another font, or stacked ones, may reach beyond the line.
    painter.save();
    painter.setClipRect(cell, Qt::IntersectClip);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.drawText(start, text);
    painter.restore();
}

void DrawCurrentMark(QPainter& painter, const QRect& cell, const QColor& color) {
    painter.setPen(QPen(color, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(cell.adjusted(0, 0, -1, -1));
}

}  // namespace

DataCellFonts::DataCellFonts(const QFont& font)
    : normal(font), null(Italic(font)), fitter(normal), nullFitter(null) {}

QPalette::ColorGroup SelectionGroup(const QPalette& palette, QPalette::ColorGroup group) {
    const int selected = qGray(palette.color(group, QPalette::Highlight).rgb());
    const int other = qGray(palette.color(group, QPalette::Base).rgb());
    return std::abs(selected - other) < VisibleDifference ? QPalette::Active : group;
}

void PaintDataCell(QPainter& painter, const QRect& cell, const DataCellState& state,
                   const DataCellFonts& fonts, const QPalette& palette) {
    const auto group = state.selected ? SelectionGroup(palette, state.group) : state.group;
    if (state.selected) painter.fillRect(cell, palette.brush(group, QPalette::Highlight));
    const bool null = state.look == CellLook::Null;
    const drawing::TextFitter& fitter = null ? fonts.nullFitter : fonts.fitter;
    const double room = cell.width() - 2 * CellMargin;
    const QString shown = fitter.Fit(state.text, room);
    if (!shown.isEmpty()) {
        const bool right = (state.look == CellLook::Number) != state.rightToLeft;
        const double free = right ? room - fitter.Width(shown) : 0;
        const double above = std::floor((cell.height() - fitter.Height()) / 2);
        painter.setFont(null ? fonts.null : fonts.normal);
        painter.setPen(TextColour(state, palette, group));
        DrawText(painter, cell,
                 {cell.left() + CellMargin + free, cell.top() + above + fitter.Ascent()}, shown);
    }
    if (!state.current) return;
    const auto frame = state.selected ? QPalette::HighlightedText : QPalette::Highlight;
    DrawCurrentMark(painter, cell, palette.color(group, frame));
}

}  // namespace quarv::forms
