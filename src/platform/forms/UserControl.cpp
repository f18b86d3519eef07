#include "platform/forms/UserControl.h"

#include <QResizeEvent>

#include "platform/forms/Application.h"
#include "platform/forms/Form.h"

namespace quarv::forms {

UserControl::UserControl(QWidget* container, const QString& name)
    : QWidget(container), Control(this, container, name) {
    RefreshSpokenName();
}

bool UserControl::UserMode() const {
    const Form* form = ParentForm();
    return form == nullptr || form->UserMode();
}

void UserControl::ReadProperties(const PropertyBag&) {}

void UserControl::WriteProperties(PropertyBag&) const {}

void UserControl::SizeChanged() {
    Application::RunEvent([this] { UserControl_Resize(); });
}

void UserControl::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    AdoptSize(event->size());
}

}  // namespace quarv::forms
