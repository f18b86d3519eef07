// DataCellPainter: the look of one cell of a DataGrid as a function of painter, rectangle and one
// struct. Colours come from the palette; the line between cells is the grid's.
#pragma once

#include <QPalette>
#include <QString>

#include "platform/drawing/TextFitter.h"
#include "platform/forms/DataCellText.h"

class QPainter;

namespace quarv::forms {

// What a cell's text leaves free at both of its sides, in pixels.
inline constexpr int CellMargin = 4;

// The font of cells and the one of nulls among them.
struct DataCellFonts {
    explicit DataCellFonts(const QFont& font);

    QFont normal;
    QFont null;  // italic
    drawing::TextFitter fitter;
    drawing::TextFitter nullFitter;
};

struct DataCellState {
    QString text;  // one line
    CellLook look;
    bool selected;
    bool current;      // and the grid has the focus
    bool rightToLeft;  // the desktop, not the text
    QPalette::ColorGroup group;
};

// Leaves font and pen of the painter as it likes, and expects no font.
void PaintDataCell(QPainter& painter, const QRect& cell, const DataCellState& state,
                   const DataCellFonts& fonts, const QPalette& palette);

// `group`, or the active one where a selection in `group` would not differ from the background.
QPalette::ColorGroup SelectionGroup(const QPalette& palette, QPalette::ColorGroup group);

}  // namespace quarv::forms
