// LinePainter: draws a line of text in the colours of its parts, with its selection and caret. The
// layout is as it would be without colours: they are nothing but paint. Knows no widget.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QStringView>
#include <QTextLayout>
#include <vector>

#include "platform/forms/LineColours.h"
#include "platform/forms/LineScanner.h"

class QPainter;

namespace quarv::forms {

struct PaintedLine {
    static constexpr int NoCaret = -1;

    const QTextLayout& layout;  // laid out
    // The layout's, without what is being composed in it; not looked at without spans.
    QStringView text;
    const std::vector<LineSpan>& spans;
    const LineColours& colours;
    // What has colours of its own, whatever the text in it is.
    const QList<QTextLayout::FormatRange>& selected;
    int caret;       // UTF-16 units of the layout, or NoCaret
    int caretWidth;  // pixels
};

// The layout's origin at `at`; plain parts in the painter's pen. Rows outside `clip` are left out.
void PaintLine(QPainter& painter, const QPointF& at, const QRectF& clip, const PaintedLine& line);

}  // namespace quarv::forms
