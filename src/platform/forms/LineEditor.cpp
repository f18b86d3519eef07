#include "platform/forms/LineEditor.h"

#include <limits>

namespace quarv::forms {

LineEditor::LineEditor(QWidget* box, RaiseKeys raise) : QLineEdit(box), raise_(std::move(raise)) {
    Limit(0);
}

void LineEditor::Limit(int units) {
    // Qt's own default cuts at 32,767, and 0 would empty the box.
    setMaxLength(units > 0 ? units : std::numeric_limits<int>::max());
}

int LineEditor::SelectionStart() const {
    return hasSelectedText() ? selectionStart() : cursorPosition();
}

bool LineEditor::event(QEvent* event) {
    return TakenByKeyDown(*event, raise_.down) || QLineEdit::event(event);
}

void LineEditor::keyPressEvent(QKeyEvent* event) {
    const auto handled = AfterKeyPress(*event, raise_.press);
    if (!handled) return;
    QLineEdit::keyPressEvent(handled.get());
    event->setAccepted(handled->isAccepted());
}

}  // namespace quarv::forms
