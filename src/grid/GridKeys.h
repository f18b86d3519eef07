// GridKeys: which keys mean something to the grid rather than to the editor that they are typed
// into.
#pragma once

class QKeyEvent;

namespace quarv {

enum class GridKey { None, Enter, Escape, Next, Previous, Up, Down, PageUp, PageDown, Button };

// Where the keyboard is: a list box uses the keys that move up and down itself.
enum class KeyPlace { Text, List };

GridKey GridKeyOf(const QKeyEvent& event, KeyPlace place);

}  // namespace quarv
