#include "platform/forms/MemoEditor.h"

#include <QInputMethodEvent>
#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QTextBlock>

#include "platform/forms/LineColouring.h"
#include "platform/forms/LinePainter.h"
#include "platform/forms/PlainText.h"

namespace quarv::forms {

namespace {

using PaintContext = QAbstractTextDocumentLayout::PaintContext;

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
    if (text.isEmpty()) return false;
    const QChar first = text.at(0);
    return first.isPrint() || first.isSurrogate() || first == u'\r' || first == u'\t';
}

QList<QTextLayout::FormatRange> SelectedIn(const QTextBlock& line, const PaintContext& context) {
    QList<QTextLayout::FormatRange> selected;
    for (const auto& selection : context.selections) {
        const int start = selection.cursor.selectionStart() - line.position();
        const int end = selection.cursor.selectionEnd() - line.position();
        if (start < line.length() && end > 0 && end > start)
            selected.append({start, end - start, selection.format});
    }
    return selected;
}

// The context has -1 where no caret is to be seen; below that the caret is in what is composed, at
// -2 before it.
int CaretIn(const QTextBlock& line, const PaintContext& context) {
    const int position = context.cursorPosition;
    const QTextLayout& layout = *line.layout();
    if (position < -1 && !layout.preeditAreaText().isEmpty())
        return layout.preeditAreaPosition() - (position + 2);
    return line.contains(position) ? position - line.position() : PaintedLine::NoCaret;
}

// The desktops differ in whether this key is one for it.
bool IsRedo(const QKeyEvent& event) {
    return event.key() == Qt::Key_Y && event.modifiers() == Qt::ControlModifier;
}

}  // namespace

MemoEditor::MemoEditor(QWidget* box, RaiseKeys raise)
    : QPlainTextEdit(box), raise_(std::move(raise)) {
    setTabChangesFocus(true);
}

MemoEditor::~MemoEditor() = default;

void MemoEditor::AcceptTabs(bool on) {
    acceptsTab_ = on;
    setTabChangesFocus(!on);
}

void MemoEditor::SetScanner(std::shared_ptr<const LineScanner> scanner) {
    if (!colouring_) {
        if (!scanner) return;
        colouring_ = std::make_unique<LineColouring>(*document());
        connect(document(), &QTextDocument::contentsChange, this,
                [this](int position, int, int added) { colouring_->Edited(position, added); });
    }
    colouring_->SetScanner(std::move(scanner));
    viewport()->update();
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
    if (TakenByKeyDown(*event, raise_.down)) return true;
    if (event->type() == QEvent::KeyPress && LeftByTab(static_cast<QKeyEvent&>(*event)))
        return true;
    if (event->type() == QEvent::ShortcutOverride && !isReadOnly() &&
        IsRedo(static_cast<QKeyEvent&>(*event))) {
        event->accept();
        return true;
    }
    return QPlainTextEdit::event(event);
}

bool MemoEditor::LeftByTab(const QKeyEvent& event) {
    const bool back = event.key() == Qt::Key_Backtab;
    if (!acceptsTab_ || (!back && event.key() != Qt::Key_Tab)) return false;
    if ((event.modifiers() & ~Qt::ShiftModifier) != Qt::ControlModifier) return false;
    const bool next = !back && !event.modifiers().testFlag(Qt::ShiftModifier);
    return QAbstractScrollArea::focusNextPrevChild(next);
}

bool MemoEditor::focusNextPrevChild(bool next) {
    // Backwards a Tab moves from here as from everywhere.
    const bool typed = acceptsTab_ && next && !isReadOnly();
    return !typed && QAbstractScrollArea::focusNextPrevChild(next);
}

void MemoEditor::keyPressEvent(QKeyEvent* event) {
    auto handled = AfterKeyPress(*event, raise_.press);
    if (!handled) return;
    if (IsRedo(*handled) && !isReadOnly()) {
        redo();
        return;
    }
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

void MemoEditor::paintEvent(QPaintEvent* event) {
    // Disabled text has one colour.
    if (colouring_ && isEnabled())
        Application::RunEvent([&] { PaintLines(event->rect()); });
    else
        QPlainTextEdit::paintEvent(event);
}

void MemoEditor::PaintLines(const QRect& painted) {
    QPainter painter(viewport());
    painter.setClipRect(painted);
    const PaintContext context = getPaintContext();
    painter.setPen(context.palette.text().color());
    if (const QColor base = context.palette.base().color(); base != background_) {
        background_ = base;
        colours_ = LineColoursOn(base);
    }
    const QRect all = viewport()->rect();
    QPointF at = contentOffset();
    for (QTextBlock line = firstVisibleBlock(); line.isValid(); line = line.next()) {
        if (at.y() > all.bottom()) break;
        const QRectF place = blockBoundingRect(line).translated(at);
        const bool changed = colouring_->Reach(line);
        if (place.bottom() >= painted.top() && place.top() <= painted.bottom())
            PaintBlock(painter, at, line, context);
        // An edit has Qt repaint its own line only.
        const QRect shown = place.toAlignedRect() & all;
        if (changed && !painted.contains(shown)) viewport()->update(shown);
        at.ry() += place.height();
    }
}

void MemoEditor::PaintBlock(QPainter& painter, const QPointF& at, const QTextBlock& line,
                            const PaintContext& context) {
    static const std::vector<LineSpan> NoSpans;
    // The length counts the line's end.
    const bool plain = line.length() > LongestColoured + 1;
    const QString text = plain ? QString() : line.text();
    PaintLine(painter, at, viewport()->rect(),
              {*line.layout(), text, plain ? NoSpans : colouring_->Spans(line, text), colours_,
               SelectedIn(line, context), CaretIn(line, context), cursorWidth()});
}

bool MemoEditor::canInsertFromMimeData(const QMimeData* source) const {
    return HasPlainText(*source);
}

void MemoEditor::insertFromMimeData(const QMimeData* source) {
    if (isReadOnly() || !source) return;
    QString text = PlainTextOf(*source);
    if (text.isNull()) return;
    const int room = Room();
    if (room >= 0) {
        text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        text = CutToRoom(text, room);
    }
    textCursor().insertText(text);
    ensureCursorVisible();
}

QMimeData* MemoEditor::createMimeDataFromSelection() const {
    QString text = textCursor().selectedText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    return AsPlainText(text).release();
}

}  // namespace quarv::forms
