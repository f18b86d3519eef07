// KeyPress: what keys mean to controls: how one that makes a character becomes the KeyPress event
// of a box, which may change the character or swallow the key, and which ones click an item.
#pragma once

#include <QKeyEvent>
#include <functional>
#include <memory>

#include "platform/forms/Application.h"

namespace quarv::forms {

// Raises a box's KeyPress; the handler may change the character.
using RaiseKeyPress = std::function<void(int&)>;

// The character of a key: 13 for Enter, 27 for Escape, 8 for Backspace, a code point beyond; 0
// where the key makes none.
int KeyAsciiOf(const QKeyEvent& event);

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
