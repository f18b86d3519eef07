#include "grid/GridTeller.h"

#include <utility>

#include "grid/KelEditGrid.h"
#include "grid/KelEditGridAccess.h"

namespace quarv {

GridTeller::GridTeller(const KelEditGridAccess& view)
    : view_(view), shape_(view.Grid()->State()), current_(Current()) {}

GridTeller::Place GridTeller::Current() const {
    return {view_.CurrentRow(), view_.CurrentColumn()};
}

void GridTeller::Tell() {
    TellShape();
    TellCurrent();
    TellFocus();
}

// Of the table itself Qt wants the widget named: an event that names a view takes its number for
// that of a child where there is a widget behind it.
void GridTeller::TellShape() {
    const GridState& state = view_.Grid()->State();
    if (shape_.IsThatOf(state)) return;
    shape_ = GridShape(state);
    QAccessibleTableModelChangeEvent reset(view_.Grid(),
                                           QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&reset);
}

// The one editor serves all cells: it is called as the column that it is over.
void GridTeller::TellCurrent() {
    const Place current = Current();
    if (current == current_) return;
    current_ = current;
    focusCame_ = true;
    QAccessibleInterface* cell = view_.cellAt(current.row, current.column);
    if (cell == nullptr) return;
    if (forms::Control* editor = forms::ControlOf(view_.Grid()->ShownEditor()))
        editor->SetSpokenName(view_.columnDescription(current.column));
    QAccessibleEvent selected(cell, QAccessible::Selection);
    QAccessible::updateAccessibility(&selected);
}

// Of an editor that has the keyboard Qt itself has told.
void GridTeller::TellFocus() {
    const bool came = std::exchange(focusCame_, false);
    if (!came || !view_.Grid()->hasFocus()) return;
    if (QAccessibleInterface* cell = view_.cellAt(current_.row, current_.column)) {
        QAccessibleEvent focus(cell, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    } else {
        QAccessibleEvent focus(view_.Grid(), QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
}

}  // namespace quarv
