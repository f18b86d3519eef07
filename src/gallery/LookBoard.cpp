#include "gallery/LookBoard.h"

#include <QPainter>

#include "controls/ButtonPainter.h"
#include "controls/CheckPainter.h"
#include "controls/StockPictures.h"
#include "platform/drawing/DrawEdge.h"
#include "platform/forms/Twips.h"

namespace quarv::gallery {

namespace {

// Pixels.
constexpr int Tile = 36;
constexpr int Step = 52;
constexpr int FirstTile = 72;

struct State {
    bool hovered, pressed, down, enabled;
};

constexpr State States[] = {
    {false, false, false, true}, {true, false, false, true},   {true, true, false, true},
    {false, false, true, true},  {false, false, false, false},
};

void Caption(QPainter& painter, int top, const QString& text) {
    painter.drawText(QRect(0, top, FirstTile - 8, Tile), Qt::AlignVCenter | Qt::AlignLeft, text);
}

}  // namespace

LookBoard::LookBoard(QWidget* container, const QString& name)
    : forms::UserControl(container, name) {}

void LookBoard::PaintButtons(QPainter& painter, int top, bool flat) const {
    int left = FirstTile;
    for (const State& state : States) {
        ButtonLook look;
        look.picture = EllipsisPicture();
        look.palette = palette();
        look.flat = flat;
        look.hovered = state.hovered;
        look.pressed = state.pressed;
        look.down = state.down;
        look.enabled = state.enabled;
        painter.save();
        painter.translate(left, top);
        PaintButton(painter, QRect(0, 0, Tile, Tile), look);
        painter.restore();
        left += Step;
    }
}

void LookBoard::PaintEdges(QPainter& painter, int top) const {
    constexpr unsigned Kinds[] = {drawing::BDR_RAISEDOUTER, drawing::BDR_SUNKENOUTER,
                                  drawing::BDR_RAISEDINNER, drawing::BDR_SUNKENINNER,
                                  drawing::EDGE_ETCHED};
    int left = FirstTile;
    for (const unsigned kind : Kinds) {
        drawing::DrawEdge(painter, QRect(left, top, Tile, Tile), kind, drawing::BF_RECT, palette());
        left += Step;
    }
}

void LookBoard::PaintChecks(QPainter& painter, int top) const {
    int left = FirstTile;
    for (const State& state : States) {
        CheckLook look;
        look.pressed = state.pressed;
        look.checked = state.hovered || state.down;
        look.enabled = state.enabled;
        PaintCheck(painter, QPointF(forms::ToTwips(left), forms::ToTwips(top + 8)), CheckMetrics(),
                   look);
        left += Step;
    }
}

void LookBoard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    const QString captions[] = {QStringLiteral("Classic"), QStringLiteral("Flat"),
                                QStringLiteral("Check"), QStringLiteral("Edges")};
    int top = 0;
    for (const QString& caption : captions) {
        Caption(painter, top, caption);
        top += Step;
    }
    PaintButtons(painter, 0, false);
    PaintButtons(painter, Step, true);
    PaintChecks(painter, 2 * Step);
    PaintEdges(painter, 3 * Step);
}

}  // namespace quarv::gallery
