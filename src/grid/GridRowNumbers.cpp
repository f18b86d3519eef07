#include "grid/GridRowNumbers.h"

#include <algorithm>

namespace quarv {

namespace {

// A deleted row keeps the number it had, and must not be taken for the one that has it now.
bool IsNumbered(const KelEditGridRowList& rows, qint16 position, int number) {
    if (position < 1 || position > rows.Count()) return false;
    const KelEditGridRow& row = *rows.Items(position);
    return row.VisibleIndex() == number + 1 && !row.IsDeleted();
}

}  // namespace

qint16 GridRowNumbers::PositionOf(const KelEditGridRowList& rows, int number) {
    if (number < 0 || number >= rows.Count()) return 0;
    // Where nothing is deleted before it, this is the position already.
    const auto first = static_cast<qint16>(number + 1);
    if (IsNumbered(rows, first, number)) return first;
    const auto known = static_cast<size_t>(number);
    if (known >= positions_.size() || !IsNumbered(rows, positions_[known], number)) Collect(rows);
    return known < positions_.size() ? positions_[known] : qint16{0};
}

int GridRowNumbers::NumberAt(const KelEditGridRowList& rows, qint16 position) {
    if (position < 1 || position > rows.Count()) return -1;
    const KelEditGridRow& row = *rows.Items(position);
    if (row.IsDeleted()) return -1;
    const int kept = row.VisibleIndex() - 1;
    if (PositionOf(rows, kept) == position) return kept;
    Collect(rows);
    const auto found = std::lower_bound(positions_.begin(), positions_.end(), position);
    return static_cast<int>(found - positions_.begin());
}

void GridRowNumbers::Collect(const KelEditGridRowList& rows) {
    positions_.clear();
    for (qint16 i = 1; i <= rows.Count(); ++i)
        if (!rows.Items(i)->IsDeleted()) positions_.push_back(i);
}

}  // namespace quarv
