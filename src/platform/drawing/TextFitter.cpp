#include "platform/drawing/TextFitter.h"

#include <algorithm>

namespace quarv::drawing {

namespace {

const QChar Ellipsis(0x2026);

// No more units than this can show: a character takes a pixel at least, but for marks that join
// the one before them.
qsizetype MostUnits(double room) {
    return static_cast<qsizetype>(std::max(room, 0.0)) + 32;
}

bool BreaksLine(QChar c) {
    switch (c.category()) {
        case QChar::Other_Control:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            return true;
        default:
            return false;
    }
}

}  // namespace

TextFitter::TextFitter(const QFont& font) : metrics_(font) {
    for (char16_t c = First; c <= Last; ++c)
        advances_[c - First] = metrics_.horizontalAdvance(QChar(c));
}

bool TextFitter::FitsPlainly(const QString& text, double room) const {
    double width = 0;
    for (const QChar c : text) {
        if (!IsPlain(c)) return false;
        width += Advance(c);
        if (width > room) return false;
    }
    return true;
}

bool TextFitter::Fits(const QString& text, double room) const {
    return FitsPlainly(text, room) || Fit(text, room) == text;
}

double TextFitter::Width(const QString& text) const {
    double width = 0;
    for (const QChar c : text) {
        if (!IsPlain(c)) return metrics_.horizontalAdvance(text);
        width += Advance(c);
    }
    return width;
}

QString TextFitter::Fit(const QString& text, double room) const {
    if (room <= 0) return {};
    return FitsPlainly(text, room) ? text : Shortened(text, room);
}

QString TextFitter::Shortened(const QString& text, double room) const {
    qsizetype most = std::min(text.size(), MostUnits(room));
    // Never between the halves of a pair.
    if (most < text.size() && most > 0 && text[most - 1].isHighSurrogate()) --most;
    QString line = text.left(most);
    for (QChar& c : line)
        if (BreaksLine(c)) c = u' ';
    const bool whole = most == text.size();
    const QString shown = metrics_.elidedText(whole ? line : line + Ellipsis, Qt::ElideRight, room);
    return shown;
}

}  // namespace quarv::drawing
