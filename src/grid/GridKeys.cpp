#include "grid/GridKeys.h"

#include <QKeyEvent>
#include <algorithm>

#include "platform/forms/KeyPress.h"

namespace quarv {

namespace {

struct Meaning {
    int key;
    GridKey meaning;
    bool usedByLists;
};

constexpr Meaning Table[] = {
    {Qt::Key_Return, GridKey::Enter, false},     {Qt::Key_Enter, GridKey::Enter, false},
    {Qt::Key_Escape, GridKey::Escape, false},    {Qt::Key_Tab, GridKey::Next, false},
    {Qt::Key_Backtab, GridKey::Previous, false}, {Qt::Key_Up, GridKey::Up, true},
    {Qt::Key_Down, GridKey::Down, true},         {Qt::Key_PageUp, GridKey::PageUp, true},
    {Qt::Key_PageDown, GridKey::PageDown, true}, {Qt::Key_F4, GridKey::Button, true},
};

}  // namespace

GridKey GridKeyOf(const QKeyEvent& event, KeyPlace place) {
    const auto* found = std::find_if(std::begin(Table), std::end(Table), [&](const Meaning& entry) {
        return entry.key == event.key();
    });
    if (found == std::end(Table) || forms::IsCommand(event)) return GridKey::None;
    return found->usedByLists && place == KeyPlace::List ? GridKey::None : found->meaning;
}

}  // namespace quarv
