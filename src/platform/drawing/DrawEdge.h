// DrawEdge: the three-dimensional edges of controls, in the palette's colours. An edge has an outer
// and an inner ring of lines, each raised, sunken or absent; codes as documented for the Win32
// function of this name.
#pragma once

#include <QPalette>
#include <QRect>

class QPainter;

namespace quarv::drawing {

enum EdgeKind : unsigned {
    BDR_RAISEDOUTER = 0x0001,
    BDR_SUNKENOUTER = 0x0002,
    BDR_RAISEDINNER = 0x0004,
    BDR_SUNKENINNER = 0x0008,
    EDGE_RAISED = BDR_RAISEDOUTER | BDR_RAISEDINNER,
    EDGE_SUNKEN = BDR_SUNKENOUTER | BDR_SUNKENINNER,
    EDGE_ETCHED = BDR_SUNKENOUTER | BDR_RAISEDINNER,
    EDGE_BUMP = BDR_RAISEDOUTER | BDR_SUNKENINNER,
};

enum EdgeSides : unsigned {
    BF_LEFT = 0x0001,
    BF_TOP = 0x0002,
    BF_RIGHT = 0x0004,
    BF_BOTTOM = 0x0008,
    BF_RECT = BF_LEFT | BF_TOP | BF_RIGHT | BF_BOTTOM,
};

// Lines of one pixel just inside `bounds` (pixels): the outer ring, then the inner one within it;
// an inner ring alone lies at the bounds. Right and bottom lines own the corners that they share
// with top and left ones. A ring both raised and sunken is not drawn. Raises InvalidProcedureCall
// for bits that name no edge or side.
void DrawEdge(QPainter& painter, const QRect& bounds, unsigned edge, unsigned sides,
              const QPalette& palette);

}  // namespace quarv::drawing
