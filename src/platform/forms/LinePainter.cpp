#include "platform/forms/LinePainter.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <array>

namespace quarv::forms {

namespace {

// Letters of the Latin scripts, which are drawn from left to right, each as one glyph.
bool IsSimple(QChar unit) {
    const char16_t code = unit.unicode();
    return (code >= 0x20 && code < 0x7F) || (code >= 0xA0 && code < 0x0300 && code != 0xAD);
}

class Parts {
  public:
    Parts(QPainter& painter, const QPointF& at, const PaintedLine& line)
        : painter_(painter), at_(at), line_(line) {}

    // From tab to tab, as a tab has no glyph.
    void Paint() {
        const int size = static_cast<int>(line_.text.size());
        for (int from = 0; from < size;) {
            const auto tab = static_cast<int>(line_.text.indexOf(u'\t', from));
            const int end = tab < 0 ? size : tab;
            if (end > from) PaintStretch(from, end);
            from = end + 1;
        }
    }

  private:
    struct Glyphs {
        QList<quint32> indexes;
        QList<QPointF> positions;
    };

    // Cuts what lies between two units into its parts, each of one kind.
    template <typename Use>
    void ForParts(int from, int end, Use&& use) {
        int at = from;
        for (const LineSpan& span : line_.spans) {
            const int start = std::max(span.start, at);
            const int stop = std::min(span.start + span.length, end);
            if (stop <= start) continue;
            if (start > at) use(at, start, LineKind::Plain);
            use(start, stop, span.kind);
            at = stop;
        }
        if (end > at) use(at, end, LineKind::Plain);
    }

    // In simple text all glyphs of a kind are drawn at once, whatever the number of parts.
    void PaintStretch(int from, int end) {
        const QStringView text = line_.text.mid(from, end - from);
        if (std::all_of(text.begin(), text.end(), IsSimple)) {
            const QList<QGlyphRun> runs = line_.layout.glyphRuns(from, end - from);
            if (runs.size() == 1 && runs[0].glyphIndexes().size() == end - from) {
                PaintByKind(runs[0], from, end);
                return;
            }
        }
        ForParts(from, end, [this](int start, int stop, LineKind kind) {
            for (const QGlyphRun& run : line_.layout.glyphRuns(start, stop - start))
                Draw(run, kind);
        });
    }

    void PaintByKind(const QGlyphRun& run, int from, int end) {
        const QList<quint32> indexes = run.glyphIndexes();
        const QList<QPointF> positions = run.positions();
        std::array<Glyphs, LineKinds> ofKind;
        ForParts(from, end, [&](int start, int stop, LineKind kind) {
            Glyphs& glyphs = ofKind[static_cast<size_t>(kind)];
            for (int i = start - from; i < stop - from; ++i) {
                glyphs.indexes.append(indexes[i]);
                glyphs.positions.append(positions[i]);
            }
        });
        for (size_t kind = 0; kind < ofKind.size(); ++kind) {
            if (ofKind[kind].indexes.isEmpty()) continue;
            QGlyphRun part = run;
            part.setGlyphIndexes(ofKind[kind].indexes);
            part.setPositions(ofKind[kind].positions);
            Draw(part, static_cast<LineKind>(kind));
        }
    }

    void Draw(const QGlyphRun& run, LineKind kind) {
        const QPen plain = painter_.pen();
        const QColor& colour = line_.colours.ofKind[static_cast<size_t>(kind)];
        if (colour.isValid()) painter_.setPen(colour);
        painter_.drawGlyphRun(at_, run);
        painter_.setPen(plain);
    }

    QPainter& painter_;
    const QPointF at_;
    const PaintedLine& line_;
};

// Each part is drawn through a clip of its own: slower, but right whatever is selected.
void PaintWithSelection(QPainter& painter, const QPointF& at, const QRectF& clip,
                        const PaintedLine& line) {
    QList<QTextLayout::FormatRange> ranges;
    for (const LineSpan& span : line.spans) {
        const QColor& colour = line.colours.ofKind[static_cast<size_t>(span.kind)];
        if (!colour.isValid()) continue;
        QTextCharFormat format;
        format.setForeground(colour);
        ranges.append({span.start, span.length, format});
    }
    line.layout.draw(&painter, at, ranges + line.selected, clip);
}

bool IsAllSelected(const PaintedLine& line) {
    return line.selected.size() == 1 && line.selected[0].start <= 0 &&
           line.selected[0].start + line.selected[0].length >= line.text.size();
}

// Parts leaves the glyphs with the layout, and those of many lines take room. A layout drops
// them after it drew, even where that was nothing.
void DropGlyphs(QPainter& painter, const QTextLayout& layout) {
    constexpr QRectF Nowhere(0, -1e6, 1, 1);
    layout.draw(&painter, {}, {}, Nowhere);
}

}  // namespace

void PaintLine(QPainter& painter, const QPointF& at, const QRectF& clip, const PaintedLine& line) {
    const bool composing = !line.layout.preeditAreaText().isEmpty();
    const bool inParts = !line.spans.empty() && !composing && line.selected.isEmpty();
    if (inParts)
        Parts(painter, at, line).Paint();
    else if (line.spans.empty() || composing || IsAllSelected(line))
        line.layout.draw(&painter, at, line.selected, clip);
    else
        PaintWithSelection(painter, at, clip, line);
    if (line.caret != PaintedLine::NoCaret)
        line.layout.drawCursor(&painter, at, line.caret, line.caretWidth);
    else if (inParts)
        DropGlyphs(painter, line.layout);
}

}  // namespace quarv::forms
