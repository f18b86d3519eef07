#include "grid/GridPainter.h"

#include <QPainter>
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "grid/CellRules.h"
#include "platform/drawing/SystemColors.h"
#include "platform/forms/Twips.h"

namespace quarv {

namespace {

using drawing::SystemColor;
using forms::ToPixels;

constexpr int Air = 3;          // pixels between the edge of a cell and its text
constexpr int OutOfSight = 64;  // pixels beyond the edge of the control

// The colour of lines on a ground: `color`, or where a dark desktop leaves no difference to see, a
// shade of what is written there.
QColor LineOn(const QColor& ground, const QColor& color, const QColor& text) {
    constexpr int Seen = 24;
    if (std::abs(color.lightness() - ground.lightness()) >= Seen) return color;
    const auto mixed = [](int a, int b) { return (3 * a + b) / 4; };
    return {mixed(ground.red(), text.red()), mixed(ground.green(), text.green()),
            mixed(ground.blue(), text.blue())};
}

struct Span {
    int left;   // pixels
    int right;  // exclusive
    qint16 position;
    ColumnRef column;  // held: a row may replace the columns while it is asked for a value
};

// The part of the grid that is painted, in pixels and lines.
class Painting {
  public:
    Painting(QPainter& painter, const QRect& area, const GridLook& look)
        : painter_(painter), area_(area), look_(look), lines_(look.state.lines) {
        FindSpans();
        const int lines = static_cast<int>(lines_.size());
        while (firstLine_ < lines && LineTop(firstLine_ + 1) <= area.top()) ++firstLine_;
        endLine_ = firstLine_;
        while (endLine_ < lines && LineTop(endLine_) <= area.bottom()) ++endLine_;
    }

    void Backgrounds();
    void Header();
    void Markers();
    std::exception_ptr Cells();
    void Lines();

  private:
    void FindSpans();
    int LineTop(int line) const {
        const GridGeometry& geometry = look_.geometry;
        return ToPixels(geometry.HeaderHeight() + double(line) * geometry.RowHeight());
    }
    int HeaderBottom() const { return ToPixels(look_.geometry.HeaderHeight()); }
    int MarginRight() const { return ToPixels(GridGeometry::LeftMargin); }
    int DataBottom() const { return LineTop(static_cast<int>(lines_.size())); }
    QColor Color(SystemColor color) const {
        return drawing::TranslateColor(drawing::Stored(color), look_.palette);
    }
    QColor LineColor() const {
        return LineOn(Color(SystemColor::WindowBackground), Color(SystemColor::ButtonShadow),
                      Color(SystemColor::WindowText));
    }
    void Text(const QString& text, int left, int right, int top, int bottom);
    void Cell(const Span& span, const KelEditGridRow& row, int line);

    QPainter& painter_;
    const QRect& area_;
    const GridLook& look_;
    const std::vector<RowRef> lines_;  // of their own, for the same reason as the columns
    std::vector<Span> spans_;
    int columnsRight_ = 0;
    int firstLine_ = 0;
    int endLine_ = 0;
};

void Painting::FindSpans() {
    const GridState& state = look_.state;
    columnsRight_ = MarginRight();
    for (qint16 i = 1; i <= state.columns->Count(); ++i) {
        const ColumnRef& column = state.columns->Items(i);
        const double left =
            double(GridGeometry::LeftMargin) + column->Left - state.horizontalOffset;
        const Span span{ToPixels(left), ToPixels(left + column->Width), i, column};
        columnsRight_ = std::max(columnsRight_, span.right);
        if (span.right > span.left && span.right > std::max(area_.left(), MarginRight()) &&
            span.left <= area_.right())
            spans_.push_back(span);
    }
}

void Painting::Backgrounds() {
    painter_.fillRect(area_, Color(SystemColor::WindowBackground));
    const QRect header(area_.left(), 0, area_.width(), HeaderBottom());
    painter_.fillRect(header & area_, Color(SystemColor::ButtonFace));
    painter_.fillRect(look_.corner & area_, Color(SystemColor::ButtonFace));
}

void Painting::Text(const QString& text, int left, int right, int top, int bottom) {
    // What lies beyond the control is not even measured.
    const int end = std::min(right, ToPixels(look_.geometry.Width()) + OutOfSight);
    const QString shown = look_.fitter.Fit(text, end - left - 2 * Air);
    if (shown.isEmpty()) return;
    const double base = top + (bottom - top - look_.fitter.Height()) / 2 + look_.fitter.Ascent();
    painter_.drawText(QPointF(left + Air, base), shown);
}

void Painting::Header() {
    if (area_.top() >= HeaderBottom()) return;
    const QColor shadow = LineColor();
    const QColor white = Color(SystemColor::ButtonHighlight);
    const int bottom = HeaderBottom();
    painter_.setPen(Color(SystemColor::ButtonText));
    for (const Span& span : spans_) {
        Text(span.column->Name, span.left, span.right - 1, 0, bottom);
        painter_.fillRect(span.left, 0, 1, bottom - 1, white);
        painter_.fillRect(span.right - 1, 0, 1, bottom, shadow);
    }
    painter_.fillRect(area_.left(), bottom - 1, area_.width(), 1, shadow);
}

void Painting::Markers() {
    const int right = MarginRight();
    if (area_.left() >= right) return;
    // Columns that are scrolled to the left lie behind the band.
    const QRect band(0, 0, right, look_.geometry.Height() > 0 ? DataBottom() : 0);
    painter_.fillRect(band, Color(SystemColor::ButtonFace));
    const QColor shadow = LineColor();
    painter_.fillRect(right - 1, 0, 1, DataBottom(), shadow);
    painter_.fillRect(0, HeaderBottom() - 1, right, 1, shadow);
    for (int line = firstLine_; line < endLine_; ++line) {
        const int bottom = LineTop(line + 1);
        painter_.fillRect(0, bottom - 1, right, 1, shadow);
        if (lines_[static_cast<size_t>(line)] != look_.state.currentRow) continue;
        look_.drawMark(painter_, QRectF(0, LineTop(line), right - 1, bottom - LineTop(line) - 1));
    }
}

void Painting::Lines() {
    const QColor shadow = LineColor();
    const int left = std::max(area_.left(), MarginRight());
    for (int line = firstLine_; line < endLine_; ++line)
        painter_.fillRect(left, LineTop(line + 1) - 1, std::max(0, columnsRight_ - left), 1,
                          shadow);
    const int top = std::max(area_.top(), HeaderBottom());
    const int height = std::min(area_.bottom() + 1, DataBottom()) - top;
    if (height <= 0) return;
    for (const Span& span : spans_) painter_.fillRect(span.right - 1, top, 1, height, shadow);
}

void Painting::Cell(const Span& span, const KelEditGridRow& row, int line) {
    const Value value = row.ColumnValue(span.position);
    if (span.column->Is(CellKind::Check) && value.kind() == Value::Kind::Boolean) {
        const QRectF place =
            CheckPlace(look_.geometry.Cell(*span.column, look_.state.horizontalOffset, line),
                       look_.checkHeight);
        const bool cut = place.left() + look_.checkHeight > forms::ToTwips(span.right);
        if (cut) painter_.save();
        if (cut) painter_.setClipRect(QRect(span.left, 0, span.right - span.left, DataBottom()));
        look_.drawCheck(painter_, value.ToBoolean(), place.left(), place.top());
        if (cut) painter_.restore();
        return;
    }
    Text(ShownText(*span.column, value), span.left, span.right - 1, LineTop(line),
         LineTop(line + 1) - 1);
}

std::exception_ptr Painting::Cells() {
    std::exception_ptr first;
    painter_.setPen(Color(SystemColor::WindowText));
    for (int line = firstLine_; line < endLine_; ++line) {
        const KelEditGridRow& row = *lines_[static_cast<size_t>(line)];
        for (const Span& span : spans_) {
            try {
                Cell(span, row, line);
            } catch (...) {
                if (!first) first = std::current_exception();
            }
        }
    }
    return first;
}

}  // namespace

QRectF CheckPlace(const QRectF& cell, double checkHeight) {
    const double above = std::max(0.0, (cell.height() - checkHeight) / 2);
    return cell.adjusted(forms::ToTwips(Air), above, 0, 0);
}

std::exception_ptr PaintGrid(QPainter& painter, const QRect& area, const GridLook& look) {
    Painting painting(painter, area, look);
    painting.Backgrounds();
    std::exception_ptr error = painting.Cells();
    painting.Lines();
    painting.Header();
    painting.Markers();
    return error;
}

}  // namespace quarv
