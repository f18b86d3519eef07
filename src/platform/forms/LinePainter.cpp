#include "platform/forms/LinePainter.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <array>

namespace quarv::forms {

namespace {

// Letters of the Latin scripts, which are drawn from left to right, each as one glyph; and the tab,
// which has none.
bool IsSimple(QChar unit) {
    const char16_t code = unit.unicode();
    return (code >= 0x20 && code < 0x7F) || (code >= 0xA0 && code < 0x0300 && code != 0xAD) ||
           code == u'\t';
}

class Parts {
  public:
    Parts(QPainter& painter, const QPointF& at, const PaintedLine& line)
        : painter_(painter), at_(at), line_(line) {}

    // In simple text all glyphs of a kind are drawn at once, whatever the number of parts.
    void Paint() {
        if (std::all_of(line_.text.begin(), line_.text.end(), IsSimple)) {
            // Asked without a range, a layout takes twice as long.
            const QList<QGlyphRun> runs =
                line_.layout.glyphRuns(0, static_cast<int>(line_.text.size()));
            const qsizetype shown = line_.text.size() - line_.text.count(u'\t');
            if (runs.size() == 1 && runs[0].glyphIndexes().size() == shown) {
                PaintByKind(runs[0]);
                return;
            }
        }
        PaintOneByOne();
    }

  private:
    // Each part looks through the whole line for its glyphs: behind so many the line is plain.
    static constexpr int MostParts = 1000;

    struct Glyphs {
        QList<quint32> indexes;
        QList<QPointF> positions;
    };

    // Cuts the line into its parts, each of one kind.
    template <typename Use>
    void ForParts(Use&& use) {
        const int size = static_cast<int>(line_.text.size());
        int at = 0;
        for (const LineSpan& span : line_.spans) {
            const int start = std::max(span.start, at);
            const int stop = std::min(span.start + span.length, size);
            if (stop <= start) continue;
            if (start > at) use(at, start, LineKind::Plain);
            use(start, stop, span.kind);
            at = stop;
        }
        if (size > at) use(at, size, LineKind::Plain);
    }

    void PaintByKind(const QGlyphRun& run) {
        const QList<quint32> indexes = run.glyphIndexes();
        const QList<QPointF> positions = run.positions();
        std::array<Glyphs, LineKinds> ofKind;
        qsizetype next = 0;
        ForParts([&](int start, int stop, LineKind kind) {
            Glyphs& glyphs = ofKind[static_cast<size_t>(kind)];
            for (int i = start; i < stop; ++i) {
                if (line_.text.at(i) == u'\t') continue;
                glyphs.indexes.append(indexes[next]);
                glyphs.positions.append(positions[next]);
                ++next;
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

    void PaintOneByOne() {
        int parts = 0, painted = 0;
        ForParts([&](int start, int stop, LineKind kind) {
            if (++parts > MostParts) return;
            painted = stop;
            for (const QGlyphRun& run : line_.layout.glyphRuns(start, stop - start))
                Draw(run, kind);
        });
        const int rest = static_cast<int>(line_.text.size()) - painted;
        if (rest == 0) return;
        for (const QGlyphRun& run : line_.layout.glyphRuns(painted, rest))
            Draw(run, LineKind::Plain);
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
