#include "platform/forms/ButtonPlus.h"

#include <QKeyEvent>

#include "platform/forms/Application.h"

namespace quarv::forms {

ButtonPlus::ButtonPlus(QWidget* container, const QString& name)
    : QPushButton(container), Control(this, container, name) {
    setAutoDefault(false);
    RefreshSpokenName();
    connect(this, &QPushButton::clicked, this,
            [this] { Application::RunEvent([this] { Q_EMIT Click(); }); });
}

void ButtonPlus::SetDefault(bool on) {
    default_ = on;
    setDefault(on);
}

void ButtonPlus::CaptionChanged(const QString& shown) {
    setText(shown);
    DeriveSpokenName(Caption());
}

void ButtonPlus::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // The button with the focus is the one that Enter presses, default or not.
        event->accept();
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

}  // namespace quarv::forms
