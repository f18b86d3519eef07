#include "platform/forms/MemoEditor.h"

#include <QInputMethodEvent>
#include <QMimeData>
#include <QTextBlock>

namespace quarv::forms {

namespace {

constexpr int LineEndUnits = 2;

// `text` cut to `units` UTF-16 units, each line end counted as CR LF. No pair is cut in two.
QString CutToRoom(const QString& text, int units) {
    int used = 0;
    for (int i = 0; i < text.size(); ++i) {
        used += text.at(i) == u'\n' ? LineEndUnits : 1;
        if (used <= units) continue;
        return text.left(i > 0 && text.at(i).isLowSurrogate() ? i - 1 : i);
    }
    return text;
}

bool EndsLineByTwo(const QString& text, int i) {
    return text.at(i) == u'\r' && i + 1 < text.size() && text.at(i + 1) == u'\n';
}

// How many places of a document the first `units` units of its text are.
int PlaceOf(const QString& text, int units) {
    int place = 0;
    for (int i = 0; i < units; ++place) {
        i += EndsLineByTwo(text, i) ? LineEndUnits : 1;
        if (i > units) return place;
    }
    return place;
}

// The other way round.
int UnitsBefore(const QString& text, int place) {
    int i = 0;
    for (; place > 0 && i < text.size(); --place) i += EndsLineByTwo(text, i) ? LineEndUnits : 1;
    return i;
}

bool Types(const QKeyEvent& event) {
    const QString text = event.text();
    return !text.isEmpty() && (text.at(0).isPrint() || text.at(0) == u'\r');
}

}  // namespace

MemoEditor::MemoEditor(QWidget* box, RaiseKeys raise)
    : QPlainTextEdit(box), raise_(std::move(raise)) {
    setTabChangesFocus(true);
}

QString MemoEditor::ReadDocument() const {
    QString text;
    text.reserve(document()->characterCount() + document()->blockCount());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockNumber() > 0) text += QStringLiteral("\r\n");
        text += block.text();
    }
    return text;
}

int MemoEditor::SelectionStart(const QString& text) const {
    return UnitsBefore(text, textCursor().selectionStart());
}

int MemoEditor::SelectionLength(const QString& text) const {
    return UnitsBefore(text, textCursor().selectionEnd()) - SelectionStart(text);
}

void MemoEditor::Select(const QString& text, int start, int length) {
    QTextCursor cursor = textCursor();
    cursor.setPosition(PlaceOf(text, start));
    cursor.setPosition(PlaceOf(text, start + length), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

int MemoEditor::Room() const {
    if (limit_ == 0) return -1;
    const QTextDocument* doc = document();
    // characterCount includes one end for every block, the last one too.
    const int length = doc->characterCount() - 1 + (doc->blockCount() - 1);
    const QTextCursor cursor = textCursor();
    const QString selected = cursor.selectedText();
    const int replaced = static_cast<int>(selected.size() + selected.count(QChar(0x2029)));
    return std::max(0, limit_ - (length - replaced));
}

bool MemoEditor::event(QEvent* event) {
    return TakenByKeyDown(*event, raise_.down) || QPlainTextEdit::event(event);
}

void MemoEditor::keyPressEvent(QKeyEvent* event) {
    auto handled = AfterKeyPress(*event, raise_.press);
    if (!handled) return;
    if (handled->matches(QKeySequence::InsertLineSeparator)) {
        // A separator inside a line would not read back as a line end.
        handled = std::make_unique<QKeyEvent>(event->type(), Qt::Key_Return, Qt::NoModifier,
                                              QStringLiteral("\r"), event->isAutoRepeat());
    }
    const int room = Room();
    const int needed = handled->key() == Qt::Key_Return || handled->key() == Qt::Key_Enter
                           ? LineEndUnits
                           : static_cast<int>(handled->text().size());
    if (room >= 0 && Types(*handled) && needed > room) return;
    QPlainTextEdit::keyPressEvent(handled.get());
    event->setAccepted(handled->isAccepted());
}

void MemoEditor::inputMethodEvent(QInputMethodEvent* event) {
    const int room = Room();
    if (room >= 0 && event->commitString().size() > room)
        event->setCommitString(CutToRoom(event->commitString(), room), event->replacementStart(),
                               event->replacementLength());
    QPlainTextEdit::inputMethodEvent(event);
}

void MemoEditor::insertFromMimeData(const QMimeData* source) {
    const int room = Room();
    if (room < 0 || !source->hasText()) {
        QPlainTextEdit::insertFromMimeData(source);
        return;
    }
    QString text = source->text();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    QMimeData cut;
    cut.setText(CutToRoom(text, room));
    QPlainTextEdit::insertFromMimeData(&cut);
}

}  // namespace quarv::forms
