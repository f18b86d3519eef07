#include "grid/GridWheel.h"

#include <algorithm>
#include <limits>

namespace quarv {

namespace {

constexpr int Step = 120;          // eighths of a degree
constexpr int TurnPerRow = 40;     // three rows a step
constexpr int TwipsPerStep = 900;  // aside

}  // namespace

GridWheel::GridWheel(const GridState& state, GridScreen& screen, GridEditing& editing)
    : state_(state), screen_(screen), editing_(editing) {}

void GridWheel::TurnAlong(int turn) {
    rest_ += turn;
    const int rows = rest_ / TurnPerRow;
    rest_ -= rows * TurnPerRow;
    if (!state_.topRow || state_.visibleRows < 1) return;
    const int top = state_.topRow->VisibleIndex();
    const int last = state_.visibleRows > state_.rowsThatFit ? state_.visibleRows : top;
    const int value = std::clamp(top - rows, 1, std::max(1, last));
    if (value == top) return;
    screen_.SetVerticalValue(static_cast<qint16>(value));
    editing_.ScrollVertically(static_cast<qint16>(value));
}

void GridWheel::TurnAside(int turn) {
    const qint64 wanted = state_.horizontalOffset - qint64{turn} * TwipsPerStep / Step;
    constexpr qint64 Most = std::numeric_limits<qint32>::max();
    const qint32 before = state_.horizontalOffset;
    const qint32 offset =
        screen_.SetHorizontalValue(static_cast<qint32>(std::clamp<qint64>(wanted, 0, Most)));
    if (offset != before) editing_.ScrollHorizontally(offset);
}

}  // namespace quarv
