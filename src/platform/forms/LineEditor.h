// LineEditor: the editor inside a TextBox of one line, which owns it. It raises KeyPress through
// its box and keeps text whole; it knows nothing else of the box.
#pragma once

#include <QLineEdit>

#include "platform/forms/KeyPress.h"

namespace quarv::forms {

class LineEditor : public QLineEdit {
    Q_OBJECT

  public:
    LineEditor(QWidget* box, RaiseKeyPress raise);
    // UTF-16 units; 0 means no limit.
    void Limit(int units);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    RaiseKeyPress raise_;
};

}  // namespace quarv::forms
