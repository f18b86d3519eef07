#include "platform/forms/KeyPress.h"

namespace quarv::forms {

int KeyAsciiOf(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Enter || event.key() == Qt::Key_Return) return u'\r';
    const QString text = event.text();
    if (text.isEmpty()) return 0;
    if (text.size() > 1 && text.at(0).isHighSurrogate() && text.at(1).isLowSurrogate())
        return static_cast<int>(QChar::surrogateToUcs4(text.at(0), text.at(1)));
    return text.at(0).unicode();
}

int ShiftOf(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers();
    return (held.testFlag(Qt::ShiftModifier) ? 1 : 0) +
           (held.testFlag(Qt::ControlModifier) ? 2 : 0) + (held.testFlag(Qt::AltModifier) ? 4 : 0);
}

bool TakenByKeyDown(QEvent& event, const RaiseKeyDown& raise) {
    if (event.type() != QEvent::KeyPress) return false;
    const auto& press = static_cast<const QKeyEvent&>(event);
    int keyCode = press.key();
    Application::RunEvent([&] { raise(keyCode, ShiftOf(press)); });
    // A key without a code, as an input method sends, cannot be swallowed.
    if (keyCode != 0 || press.key() == 0) return false;
    event.accept();
    return true;
}

bool IsCommand(const QKeyEvent& event) {
    constexpr auto Held = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return (event.modifiers() & Held) != 0;
}

bool ClicksItem(const QKeyEvent& event) {
    const int key = event.key();
    return (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) &&
           event.modifiers() == Qt::NoModifier;
}

std::unique_ptr<QKeyEvent> WithCharacter(const QKeyEvent& event, int keyAscii) {
    const char32_t code = static_cast<char32_t>(keyAscii);
    return std::make_unique<QKeyEvent>(event.type(), keyAscii == u'\r' ? Qt::Key_Return : 0,
                                       Qt::NoModifier, QString::fromUcs4(&code, 1),
                                       event.isAutoRepeat());
}

}  // namespace quarv::forms
