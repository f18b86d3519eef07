#include "controls/RCheckboxAccess.h"

#include "controls/RCheckbox.h"

namespace quarv {

namespace {

QAccessibleInterface* MakeFor(const QString&, QObject* object) {
    auto* box = qobject_cast<RCheckbox*>(object);
    return box == nullptr ? nullptr : new RCheckboxAccess(box);
}

}  // namespace

RCheckboxAccess::RCheckboxAccess(RCheckbox* box) : QAccessibleWidget(box, QAccessible::CheckBox) {}

void RCheckboxAccess::Install() {
    QAccessible::installFactory(MakeFor);
}

void RCheckboxAccess::NoteChecked(RCheckbox& box) {
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(&box, changed);
    QAccessible::updateAccessibility(&event);
}

RCheckbox* RCheckboxAccess::Box() const {
    return static_cast<RCheckbox*>(object());
}

QAccessible::State RCheckboxAccess::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = Box()->Checked();
    return state;
}

QStringList RCheckboxAccess::actionNames() const {
    QStringList names = QAccessibleWidget::actionNames();
    if (Box()->isEnabled()) names = QStringList{toggleAction(), pressAction()} + names;
    return names;
}

void RCheckboxAccess::doAction(const QString& action) {
    if (action == toggleAction() || action == pressAction())
        Box()->Toggle();
    else
        QAccessibleWidget::doAction(action);
}

}  // namespace quarv
