// LineEditor: the editor inside a TextBox of one line, which owns it. It raises the key events of
// its box and keeps text whole; it knows nothing else of the box.
#pragma once

#include <QLineEdit>

#include "platform/forms/KeyPress.h"

namespace quarv::forms {

class LineEditor : public QLineEdit {
    Q_OBJECT

  public:
    LineEditor(QWidget* box, RaiseKeys raise);
    // UTF-16 units; 0 means no limit.
    void Limit(int units);
    // The first unit of the selection, or where the caret is; UTF-16 units.
    int SelectionStart() const;
    // `start` and `start + length` inside the text.
    void Select(int start, int length) { setSelection(start, length); }

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    RaiseKeys raise_;
};

}  // namespace quarv::forms
