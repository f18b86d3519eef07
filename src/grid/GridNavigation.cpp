#include "grid/GridNavigation.h"

#include <algorithm>

namespace quarv {

GridNavigation::GridNavigation(const GridState& state, GridEditing& editing)
    : state_(state), editing_(editing) {}

int GridNavigation::Page() const {
    return std::max<int>(1, state_.rowsThatFit);
}

qint16 GridNavigation::NextVisible(qint16 from, Way way) const {
    const KelEditGridRowList& rows = *state_.rows;
    const int step = way == Way::Forward ? 1 : -1;
    // The host may have taken rows away without a word.
    const int start = std::min<int>(from, rows.Count() + 1);
    for (int i = start + step; i >= 1 && i <= rows.Count(); i += step) {
        const auto position = static_cast<qint16>(i);
        if (!rows.Items(position)->IsDeleted()) return position;
    }
    return 0;
}

bool GridNavigation::Step(Way way) {
    const qint16 count = state_.columns->Count();
    const int column = state_.currentColumn + (way == Way::Forward ? 1 : -1);
    if (column >= 1 && column <= count) {
        editing_.Enter(state_.currentPosition, static_cast<qint16>(column));
        return true;
    }
    const qint16 row = NextVisible(state_.currentPosition, way);
    if (row == 0) return false;
    editing_.Enter(row, way == Way::Forward ? qint16{1} : count);
    return true;
}

void GridNavigation::MoveRows(Way way, int count) {
    const qint16 column = std::max<qint16>(1, state_.currentColumn);
    qint16 target = 0;
    if (state_.currentPosition == 0) {
        if (!state_.lines.empty()) target = state_.rows->IndexOf(state_.lines.front());
    } else {
        qint16 next = state_.currentPosition;
        for (int i = 0; i < count && (next = NextVisible(next, way)) > 0; ++i) target = next;
    }
    if (target > 0) editing_.Enter(target, column);
}

}  // namespace quarv
