#include "grid/GridPartAccess.h"

#include "grid/KelEditGrid.h"
#include "grid/KelEditGridAccess.h"

namespace quarv {

bool GridPartAccess::isValid() const {
    return !retired_ && table_.HoldsParts();
}

QWindow* GridPartAccess::window() const {
    return table_.window();
}

QAccessibleInterface* GridPartAccess::parent() const {
    return &table_;
}

QRect GridPartAccess::rect() const {
    return isValid() ? table_.PlaceOf(row_, column_) : QRect();
}

QString GridPartAccess::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name && isValid() ? Name() : QString();
}

QAccessible::State GridPartAccess::state() const {
    QAccessible::State state;
    const KelEditGrid* grid = Grid();
    if (grid == nullptr) {
        state.invalid = true;
        return state;
    }
    state.disabled = !grid->isEnabled();
    state.invisible = !grid->isVisible();
    state.offscreen = rect().isEmpty();
    return state;
}

KelEditGrid* GridPartAccess::Grid() const {
    return isValid() ? table_.Grid() : nullptr;
}

ColumnRef GridPartAccess::ColumnInfo() const {
    return Grid()->State().columns->Items(static_cast<qint16>(column_ + 1));
}

}  // namespace quarv
