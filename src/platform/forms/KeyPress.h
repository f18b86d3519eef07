// KeyPress: what keys mean to controls: how each becomes the KeyDown event of a box and one that
// makes a character also its KeyPress event, which may change the character; both may swallow the
// key. And which keys click an item.
#pragma once

#include <QKeyEvent>
#include <functional>
#include <memory>

#include "platform/forms/Application.h"

namespace quarv::forms {

// Raises a box's KeyPress; the handler may change the character.
using RaiseKeyPress = std::function<void(int&)>;

// Raises a box's KeyDown; the handler may set the code to 0.
using RaiseKeyDown = std::function<void(int&, int)>;

// What an editor inside a box raises through it.
struct RaiseKeys {
    RaiseKeyPress press;
    RaiseKeyDown down;
};

// The character of a key: 13 for Enter, 27 for Escape, 8 for Backspace, a code point beyond; 0
// where the key makes none.
int KeyAsciiOf(const QKeyEvent& event);

// Which of Shift (1), Ctrl (2) and Alt (4) are held, added up.
int ShiftOf(const QKeyEvent& event);

// Raises KeyDown where `event` is a key press, by its Qt::Key. True where the handler set the code
// to 0; the event is accepted then, and the box is not to see it. To be asked in a widget's
// event(), as Qt takes Tab and Backtab there.
bool TakenByKeyDown(QEvent& event, const RaiseKeyDown& raise);

// Ctrl, Alt or Meta is held: the key is a command of an editor or the window, no text.
bool IsCommand(const QKeyEvent& event);

// Enter or Space alone: what clicks the current item of a list or tree.
bool ClicksItem(const QKeyEvent& event);

// The event as if the key had made `keyAscii`.
std::unique_ptr<QKeyEvent> WithCharacter(const QKeyEvent& event, int keyAscii);

// Raises KeyPress by `raise(int&)` for a key that makes a character. Gives the event that the box
// is to handle, or null where the handler set the character to 0.
template <typename Raise>
std::unique_ptr<QKeyEvent> AfterKeyPress(const QKeyEvent& event, Raise&& raise) {
    const int typed = KeyAsciiOf(event);
    int keyAscii = typed;
    if (typed != 0) {
        Application::RunEvent([&] { raise(keyAscii); });
        if (keyAscii == 0) return nullptr;
    }
    if (keyAscii != typed) return WithCharacter(event, keyAscii);
    return std::unique_ptr<QKeyEvent>(event.clone());
}

}  // namespace quarv::forms
