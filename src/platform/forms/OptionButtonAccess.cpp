#include "platform/forms/OptionButtonAccess.h"

#include "platform/forms/OptionButton.h"

namespace quarv::forms {

namespace {

QAccessibleInterface* MakeFor(const QString&, QObject* object) {
    auto* choice = qobject_cast<OptionButton*>(object);
    return choice == nullptr ? nullptr : new OptionButtonAccess(choice);
}

}  // namespace

OptionButtonAccess::OptionButtonAccess(OptionButton* choice)
    : QAccessibleWidget(choice, QAccessible::RadioButton) {}

void OptionButtonAccess::Install() {
    QAccessible::installFactory(MakeFor);
}

OptionButton* OptionButtonAccess::Choice() const {
    return static_cast<OptionButton*>(object());
}

QAccessible::State OptionButtonAccess::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = Choice()->isChecked();
    state.pressed = Choice()->isDown();
    return state;
}

QStringList OptionButtonAccess::actionNames() const {
    QStringList names = QAccessibleWidget::actionNames();
    if (Choice()->isEnabled()) names.prepend(toggleAction());
    return names;
}

void OptionButtonAccess::doAction(const QString& action) {
    if (action == toggleAction())
        Choice()->click();
    else
        QAccessibleWidget::doAction(action);
}

}  // namespace quarv::forms
