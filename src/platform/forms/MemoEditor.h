// MemoEditor: the editor inside a TextBox of many lines, which owns it. It raises the key events of
// its box and keeps text whole; it knows nothing else of the box.
#pragma once

#include <QPlainTextEdit>

#include "platform/forms/KeyPress.h"

namespace quarv::forms {

class MemoEditor : public QPlainTextEdit {
    Q_OBJECT

  public:
    MemoEditor(QWidget* box, RaiseKeys raise);
    // UTF-16 units, a line end counting as two; 0 means no limit.
    void Limit(int units) { limit_ = units; }
    // The document with CR LF line ends, every other character as it stands.
    QString ReadDocument() const;
    // The selection in UTF-16 units of `text`, which the document shows; a CR LF is two units there
    // and one place here. A start or an end between the two goes before them.
    int SelectionStart(const QString& text) const;
    int SelectionLength(const QString& text) const;
    void Select(const QString& text, int start, int length);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    // How many more units may be put in place of the selection; -1 for any number.
    int Room() const;

    RaiseKeys raise_;
    int limit_ = 0;
};

}  // namespace quarv::forms
