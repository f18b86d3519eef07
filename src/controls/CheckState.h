// CheckState: what an owner-drawn check box knows, without a widget. Its check box owns it.
#pragma once

#include <optional>

namespace quarv {

struct CheckState {
    bool isChecked = false;
    // Chooses the picture of the box. Nothing sets it: a check box changes at the click itself.
    bool isPressed = false;

    // What the character of a key (a UTF-16 unit or code point) makes of it; nothing where it means
    // none. "Y" and "N" act as capitals only.
    std::optional<bool> AfterKey(int character) const;
};

}  // namespace quarv
