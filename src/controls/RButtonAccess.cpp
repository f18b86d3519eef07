#include "controls/RButtonAccess.h"

#include "controls/RButton.h"

namespace quarv {

namespace {

QAccessibleInterface* MakeFor(const QString&, QObject* object) {
    auto* button = qobject_cast<RButton*>(object);
    return button == nullptr ? nullptr : new RButtonAccess(button);
}

}  // namespace

RButtonAccess::RButtonAccess(RButton* button) : QAccessibleWidget(button, QAccessible::Button) {}

void RButtonAccess::Install() {
    QAccessible::installFactory(MakeFor);
}

void RButtonAccess::NotePressed(RButton& button) {
    QAccessible::State changed;
    changed.pressed = true;
    QAccessibleStateChangeEvent event(&button, changed);
    QAccessible::updateAccessibility(&event);
}

RButton* RButtonAccess::Button() const {
    return static_cast<RButton*>(object());
}

QAccessible::State RButtonAccess::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.pressed = Button()->IsPressed() || Button()->Down();
    return state;
}

QStringList RButtonAccess::actionNames() const {
    QStringList names = QAccessibleWidget::actionNames();
    if (Button()->isEnabled()) names.prepend(pressAction());
    return names;
}

void RButtonAccess::doAction(const QString& action) {
    if (action == pressAction())
        Button()->Press();
    else
        QAccessibleWidget::doAction(action);
}

}  // namespace quarv
