#include "platform/forms/OptionButton.h"

#include <QKeyEvent>
#include <algorithm>
#include <vector>

#include "platform/forms/Application.h"
#include "platform/forms/OptionButtonAccess.h"

namespace quarv::forms {

namespace {

std::vector<OptionButton*> ChoicesOf(const QWidget* container) {
    std::vector<OptionButton*> choices;
    if (container == nullptr) return choices;
    for (QObject* child : container->children())
        if (auto* choice = qobject_cast<OptionButton*>(child)) choices.push_back(choice);
    return choices;
}

}  // namespace

OptionButton::OptionButton(QWidget* container, const QString& name)
    : QRadioButton(container), Control(this, container, name) {
    OptionButtonAccess::Install();
    // Qt's own exclusion would keep one chosen for ever.
    setAutoExclusive(false);
    RefreshSpokenName();
    connect(this, &QRadioButton::clicked, this, &OptionButton::RaiseClick);
}

void OptionButton::CaptionChanged(const QString& shown) {
    setText(shown);
    DeriveSpokenName(Caption());
}

void OptionButton::SetValue(bool chosen) {
    if (chosen == isChecked()) return;
    setChecked(chosen);
    if (!chosen) return;
    UnchooseOthers();
    RaiseClick();
}

void OptionButton::nextCheckState() {
    setChecked(true);
    UnchooseOthers();
}

void OptionButton::UnchooseOthers() {
    for (OptionButton* choice : ChoicesOf(parentWidget()))
        if (choice != this) choice->setChecked(false);
}

OptionButton* OptionButton::Neighbour(int step) const {
    std::vector<OptionButton*> usable = ChoicesOf(parentWidget());
    std::erase_if(usable, [this](const OptionButton* choice) {
        return choice != this && !(choice->isEnabled() && choice->isVisible());
    });
    const auto here = std::find(usable.begin(), usable.end(), this);
    if (here == usable.end()) return nullptr;
    const auto count = static_cast<int>(usable.size());
    const auto position = static_cast<int>(here - usable.begin());
    return usable[static_cast<size_t>((position + step + count) % count)];
}

void OptionButton::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const int step = key == Qt::Key_Down || key == Qt::Key_Right ? 1
                     : key == Qt::Key_Up || key == Qt::Key_Left  ? -1
                                                                 : 0;
    OptionButton* next = step == 0 ? nullptr : Neighbour(step);
    if (next == nullptr || next == this) {
        QRadioButton::keyPressEvent(event);
        return;
    }
    event->accept();
    next->setFocus(Qt::TabFocusReason);
    next->click();
}

void OptionButton::RaiseClick() {
    Application::RunEvent([this] { Q_EMIT Click(); });
}

}  // namespace quarv::forms
