#include "controls/StockPictures.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

#include "controls/PathIcon.h"

namespace quarv {
namespace {

constexpr int BoxUnits = 13;
constexpr int TickUnits = 7;
constexpr int MarkUnits = 9;
constexpr int DotsUnits = 8;

drawing::PictureRef Make(DrawPathIcon draw, int units) {
    const QSize size(units, units);
    return std::make_shared<drawing::Picture>(MakePathIcon(std::move(draw), size), size);
}

QColor Solid(const PathInks& inks) {
    QColor color = inks.line.color();
    color.setAlphaF(1);
    return color;
}

QColor Between(const QColor& paper, const QColor& ink, int percent) {
    const auto mix = [percent](int a, int b) { return a + (b - a) * percent / 100; };
    return {mix(paper.red(), ink.red()), mix(paper.green(), ink.green()),
            mix(paper.blue(), ink.blue())};
}

void DrawBox(QPainter& p, const PathInks& inks, int paperPercent) {
    p.fillRect(QRect(0, 0, BoxUnits, BoxUnits), Between(inks.paper, Solid(inks), 60));
    p.fillRect(QRect(1, 1, BoxUnits - 2, BoxUnits - 2),
               Between(inks.paper, Solid(inks), paperPercent));
}

void DrawEmptyBox(QPainter& p, const PathInks& inks) {
    DrawBox(p, inks, 0);
}

void DrawPressedBox(QPainter& p, const PathInks& inks) {
    DrawBox(p, inks, 20);
}

void DrawTick(QPainter& p, const PathInks& inks) {
    QPainterPath tick;
    tick.moveTo(0.9, 3.6);
    tick.lineTo(2.7, 5.5);
    tick.lineTo(6.1, 1.3);
    p.strokePath(tick, QPen(Solid(inks), 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void DrawTriangle(QPainter& p, const PathInks& inks) {
    QPainterPath triangle;
    triangle.moveTo(2, 0.5);
    triangle.lineTo(7, 4.5);
    triangle.lineTo(2, 8.5);
    triangle.closeSubpath();
    p.fillPath(triangle, Solid(inks));
}

void DrawDots(QPainter& p, const PathInks& inks) {
    for (const int x : {0, 3, 6}) p.fillRect(QRect(x, 3, 2, 2), Solid(inks));
}

}  // namespace

drawing::PictureRef EmptyBoxPicture() {
    static const drawing::PictureRef picture = Make(DrawEmptyBox, BoxUnits);
    return picture;
}

drawing::PictureRef PressedBoxPicture() {
    static const drawing::PictureRef picture = Make(DrawPressedBox, BoxUnits);
    return picture;
}

drawing::PictureRef CheckMarkPicture() {
    static const drawing::PictureRef picture = Make(DrawTick, TickUnits);
    return picture;
}

drawing::PictureRef CurrentRowPicture() {
    static const drawing::PictureRef picture = Make(DrawTriangle, MarkUnits);
    return picture;
}

drawing::PictureRef EllipsisPicture() {
    static const drawing::PictureRef picture = Make(DrawDots, DotsUnits);
    return picture;
}

drawing::PictureRef WordsPicture(const QString& words, const QFont& font) {
    const QFontMetrics metrics(font);
    const QSize size(metrics.horizontalAdvance(words), metrics.height());
    const auto draw = [words, font, ascent = metrics.ascent()](QPainter& p, const PathInks& inks) {
        p.setFont(font);
        p.setPen(inks.words);
        p.drawText(QPoint(0, ascent), words);
    };
    return std::make_shared<drawing::Picture>(MakePathIcon(draw, size), size);
}

}  // namespace quarv
