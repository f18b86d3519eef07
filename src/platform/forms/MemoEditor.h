// MemoEditor: the editor inside a TextBox of many lines, which owns it. It raises the key events of
// its box, keeps text whole and has the lines on the screen coloured; it knows nothing else of the
// box.
#pragma once

#include <QAbstractTextDocumentLayout>
#include <QPlainTextEdit>
#include <memory>

#include "platform/forms/KeyPress.h"
#include "platform/forms/LineColours.h"

namespace quarv::forms {

class LineColouring;

class MemoEditor : public QPlainTextEdit {
    Q_OBJECT

  public:
    // Longer lines, in UTF-16 units, are plain: all of one would be shaped for what is on the
    // screen.
    static constexpr int LongestColoured = 20'000;

    MemoEditor(QWidget* box, RaiseKeys raise);
    ~MemoEditor() override;
    // UTF-16 units, a line end counting as two; 0 means no limit.
    void Limit(int units) { limit_ = units; }
    // Tab is text unless the editor is read-only; Ctrl+Tab moves on instead. Off at first.
    void AcceptTabs(bool on);
    // Null for a text without colours, as it is at first.
    void SetScanner(std::shared_ptr<const LineScanner> scanner);
    // The document with CR LF line ends, every other character as it stands.
    QString ReadDocument() const;
    // The selection in UTF-16 units of `text`, which the document shows; a CR LF is two units there
    // and one place here. A start or an end between the two goes before them.
    int SelectionStart(const QString& text) const;
    int SelectionLength(const QString& text) const;
    void Select(const QString& text, int start, int length);

  protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    QMimeData* createMimeDataFromSelection() const override;

  private:
    bool LeftByTab(const QKeyEvent& event);
    void PaintLines(const QRect& painted);
    void PaintBlock(QPainter& painter, const QPointF& at, const QTextBlock& line,
                    const QAbstractTextDocumentLayout::PaintContext& context);
    // How many more units may be put in place of the selection; -1 for any number.
    int Room() const;

    RaiseKeys raise_;
    std::unique_ptr<LineColouring> colouring_;
    // Of the background that they were made for.
    LineColours colours_;
    QColor background_;
    int limit_ = 0;
    bool acceptsTab_ = false;
};

}  // namespace quarv::forms
