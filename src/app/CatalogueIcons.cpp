#include "app/CatalogueIcons.h"

#include <QPainter>
#include <QPainterPath>

#include "controls/PathIcon.h"

namespace quarv {
namespace {

constexpr QRgb Blue = 0xff4a86c5;
constexpr QRgb Amber = 0xffe0a63a;
constexpr QRgb Green = 0xff4f9d69;

void DrawGrid(QPainter& p, const PathInks& inks, const QRectF& r, const QColor& head) {
    p.setPen(inks.line);
    p.setBrush(inks.paper);
    p.drawRect(r);
    const qreal row = r.height() / 3;
    p.fillRect(QRectF(r.left() + 0.5, r.top() + 0.5, r.width() - 1, row - 0.5), head);
    for (int i = 1; i < 3; ++i) {
        const qreal y = r.top() + row * i;
        p.drawLine(QPointF(r.left(), y), QPointF(r.right(), y));
    }
    const qreal x = r.left() + r.width() * 0.42;
    p.drawLine(QPointF(x, r.top() + row), QPointF(x, r.bottom()));
}

void DrawTable(QPainter& p, const PathInks& inks) {
    DrawGrid(p, inks, QRectF(1.5, 2.5, 13, 11), QColor::fromRgba(Blue));
}

void DrawTables(QPainter& p, const PathInks& inks) {
    DrawGrid(p, inks, QRectF(4.5, 1.5, 10, 9), QColor::fromRgba(Blue).lighter(125));
    DrawGrid(p, inks, QRectF(1.5, 5.5, 10, 9), QColor::fromRgba(Blue));
}

void DrawView(QPainter& p, const PathInks& inks) {
    DrawGrid(p, inks, QRectF(1.5, 2.5, 13, 11), QColor::fromRgba(Green));
}

void DrawDatabase(QPainter& p, const PathInks& inks) {
    QPainterPath drum;
    drum.moveTo(2.5, 3.5);
    drum.lineTo(2.5, 12.5);
    drum.cubicTo(2.5, 15.2, 13.5, 15.2, 13.5, 12.5);
    drum.lineTo(13.5, 3.5);
    drum.closeSubpath();
    p.setPen(inks.line);
    p.setBrush(QColor::fromRgba(Amber));
    p.drawPath(drum);
    QPainterPath rings;
    for (const qreal y : {6.5, 9.5}) {
        rings.moveTo(2.5, y);
        rings.cubicTo(2.5, y + 2.7, 13.5, y + 2.7, 13.5, y);
    }
    p.strokePath(rings, inks.line);
    p.setBrush(QColor::fromRgba(Amber).lighter(140));
    p.drawEllipse(QRectF(2.5, 1.5, 11, 4));
}

// A sheet with a turned corner and lines of code.
void DrawSheet(QPainter& p, const PathInks& inks, const QPointF& at, const QColor& code) {
    QPainterPath sheet;
    sheet.moveTo(0, 0);
    sheet.lineTo(6, 0);
    sheet.lineTo(9, 3);
    sheet.lineTo(9, 11);
    sheet.lineTo(0, 11);
    sheet.closeSubpath();
    sheet.translate(at);
    p.setPen(inks.line);
    p.setBrush(inks.paper);
    p.drawPath(sheet);
    p.setPen(QPen(code, 1.2));
    for (const auto& [y, from, to] :
         {std::tuple(3.5, 2.0, 5.0), std::tuple(6.0, 3.0, 7.0), std::tuple(8.5, 2.0, 6.0)})
        p.drawLine(at + QPointF(from, y), at + QPointF(to, y));
}

void DrawProcedure(QPainter& p, const PathInks& inks) {
    DrawSheet(p, inks, QPointF(3.5, 2.5), QColor::fromRgba(Green));
}

void DrawRoutines(QPainter& p, const PathInks& inks) {
    DrawSheet(p, inks, QPointF(5.5, 1.5), QColor::fromRgba(Green));
    DrawSheet(p, inks, QPointF(1.5, 3.5), QColor::fromRgba(Green));
}

}  // namespace

QIcon MakeCatalogueIcon(CatalogueIcon which) {
    static constexpr void (*Drawings[])(QPainter&, const PathInks&) = {
        DrawTable, DrawDatabase, DrawView, DrawTables, DrawProcedure, DrawRoutines};
    return MakePathIcon(Drawings[which - TableIcon]);
}

}  // namespace quarv
