#include "platform/forms/ItemText.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace quarv::forms {

namespace {

constexpr int LongestShown = 2000;    // UTF-16 units in a cell
constexpr int LongestToolTip = 1000;  // and in a tool tip

bool NeedsBlank(QChar c) {
    return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
           c.category() == QChar::Separator_Paragraph;
}

// A tool tip wraps between words alone; a word of a thousand units would leave the screen.
QString WithBreaksInLongWords(const QString& text) {
    constexpr int LongestWord = 60;
    QString broken;
    int word = 0;
    for (const QChar c : text) {
        word = c.isSpace() ? 0 : word + 1;
        if (word > LongestWord && !c.isLowSurrogate() && !c.isMark()) {
            broken += QChar(0x200B);
            word = 1;
        }
        broken += c;
    }
    return broken;
}

QString Cut(const QString& text, int units) {
    if (text.size() <= units) return text;
    const int end = text.at(units - 1).isHighSurrogate() ? units - 1 : units;
    return text.left(end) + QChar(0x2026);
}

}  // namespace

QString ShownText(const QString& text) {
    QString shown = Cut(text, LongestShown);
    for (int i = 0; i < shown.size(); ++i)
        if (NeedsBlank(shown.at(i))) shown[i] = u' ';
    return shown;
}

QString FoldKey(const QString& key) {
    // Simple folding keeps every character's number of units, so it can be done in place.
    QString folded(key.size(), Qt::Uninitialized);
    QChar* out = folded.data();
    for (int i = 0; i < key.size(); ++i) {
        const QChar c = key.at(i);
        if (c.unicode() < 0x80) {
            *out++ = c >= u'A' && c <= u'Z' ? QChar(c.unicode() | 0x20) : c;
        } else if (c.isHighSurrogate() && i + 1 < key.size() && key.at(i + 1).isLowSurrogate()) {
            const char32_t code = QChar::toCaseFolded(QChar::surrogateToUcs4(c, key.at(++i)));
            *out++ = QChar(QChar::highSurrogate(code));
            *out++ = QChar(QChar::lowSurrogate(code));
        } else {
            *out++ = c.toCaseFolded();
        }
    }
    return folded;
}

QString PlainToolTip(const QString& text) {
    if (text.isEmpty()) return text;
    return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>")
        .arg(WithBreaksInLongWords(text).toHtmlEscaped());
}

void ShowCutOffText(QAbstractItemView& view, const QHelpEvent& event) {
    const QModelIndex index = view.indexAt(event.pos());
    const QRect cell = view.visualRect(index);
    const bool cutOff =
        index.isValid() && (view.sizeHintForIndex(index).width() > cell.width() ||
                            cell.right() > view.viewport()->width() || cell.left() < 0);
    if (!cutOff) {
        QToolTip::hideText();
        return;
    }
    const QString text = Cut(index.data(WholeTextRole).toString(), LongestToolTip);
    QToolTip::showText(event.globalPos(), PlainToolTip(text), view.viewport(), cell);
}

}  // namespace quarv::forms
