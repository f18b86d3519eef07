// MemoEditor: the editor inside a TextBox of many lines, which owns it. It raises KeyPress through
// its box and keeps text whole; it knows nothing else of the box.
#pragma once

#include <QPlainTextEdit>

#include "platform/forms/KeyPress.h"

namespace quarv::forms {

class MemoEditor : public QPlainTextEdit {
    Q_OBJECT

  public:
    MemoEditor(QWidget* box, RaiseKeyPress raise);
    // UTF-16 units, a line end counting as two; 0 means no limit.
    void Limit(int units) { limit_ = units; }
    // The document with CR LF line ends, every other character as it stands.
    QString ReadDocument() const;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    // How many more units may be put in place of the selection; -1 for any number.
    int Room() const;

    RaiseKeyPress raise_;
    int limit_ = 0;
};

}  // namespace quarv::forms
