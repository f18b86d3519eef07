#include "grid/GridLayout.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "grid/Checked32.h"

namespace quarv {

GridLayout::GridLayout(GridState& state, GridGeometry& geometry, GridScreen& screen,
                       CellEditors& editors)
    : state_(state), geometry_(geometry), screen_(screen), editors_(editors) {}

void GridLayout::Resize() {
    state_.rowsThatFit = geometry_.RowsThatFit();
    NumVisibleMayHaveChanged();
    Redraw();
}

void GridLayout::SetColList(ColumnListRef columns) {
    if (!columns) throw RuntimeError(RuntimeError::ObjectNotSet);
    state_.columns = std::move(columns);
    state_.currentPosition = 0;
    HideEditors();
    SetWidths();
    Redraw();
}

void GridLayout::SetRowList(RowListRef rows) {
    if (!rows) throw RuntimeError(RuntimeError::ObjectNotSet);
    state_.rows = std::move(rows);
    state_.currentPosition = 0;
    HideEditors();
    SetTopRow(state_.rows->Items(1), 1);
    NumVisibleMayHaveChanged();
    FollowTopRow();
    Redraw();
}

void GridLayout::NumVisibleMayHaveChanged() {
    const qint16 visible = state_.rows->RenumberVisibleFields();
    state_.visibleRows = visible;
    const qint16 page = std::max<qint16>(1, state_.rowsThatFit);
    if (visible >= 1 && visible > state_.rowsThatFit)
        screen_.ShowVertical(visible, page);
    else
        screen_.HideVertical();
    // The bar has moved with its range; a first row that is gone is no place to be.
    if (ReplaceLostTopRow()) FollowTopRow();
}

// The comparison deliberately uses the whole width: neither the margin nor the vertical bar is
// taken off, so that the end of the last column may stay out of reach.
void GridLayout::SetWidths() {
    state_.horizontalOffset = 0;
    qint64 total = 0;
    for (qint16 i = 1; i <= state_.columns->Count(); ++i) total += state_.columns->Items(i)->Width;
    const double width = geometry_.Width();
    if (static_cast<double>(Narrow32(total)) <= width) {
        screen_.HideHorizontal();
        return;
    }
    const auto max = static_cast<qint64>(std::nearbyint(static_cast<double>(total) - width));
    // A large step keeps a little of what was in view.
    const double page = std::clamp(width - 2 * GridGeometry::LeftMargin, 1.0,
                                   double{std::numeric_limits<qint16>::max()});
    screen_.ShowHorizontal(Narrow32(max), static_cast<qint16>(page));
}

void GridLayout::DataHasChanged() {
    RepairTopRow();
    FollowTopRow();
    Redraw();
}

void GridLayout::ShowFrom(qint16 value) {
    qint16 found = 0;
    const RowListRef list = state_.rows;
    const KelEditGridRowList& rows = *list;
    for (qint16 i = 1; i <= rows.Count(); ++i)
        if (rows.Items(i)->VisibleIndex() == value) found = i;
    if (found > 0) {
        SetTopRow(rows.Items(found), found);
        HideEditors();
    }
}

void GridLayout::SetTopRow(const RowRef& row, qint16 position) {
    state_.topRow = row;
    topPosition_ = position;
}

void GridLayout::FollowTopRow() {
    if (state_.topRow)
        screen_.SetVerticalValue(state_.topRow->VisibleIndex());
    else
        screen_.SetVerticalToMin();
}

void GridLayout::RepairTopRow() {
    if (ReplaceLostTopRow() || !state_.topRow) return;
    if (state_.topRow->IsDeleted()) ShowNear(topPosition_);
}

bool GridLayout::ReplaceLostTopRow() {
    if (TopPosition() > 0) return false;
    const RowListRef rows = state_.rows;
    // Rows that all fit are all to be seen.
    if (!state_.topRow || state_.visibleRows <= state_.rowsThatFit) {
        const RowRef first = rows->FirstVisible();
        const bool changed = first != state_.topRow;
        SetTopRow(first, first ? rows->IndexOf(first) : qint16{0});
        return changed;
    }
    // Where it was stands now what came after it.
    const qint16 place = std::clamp<qint16>(topPosition_, 1, std::max<qint16>(1, rows->Count()));
    state_.topRow = nullptr;
    ShowNear(place);
    return true;
}

void GridLayout::ShowNear(qint16 position) {
    const RowListRef rows = state_.rows;
    for (qint16 i = position; i <= rows->Count(); ++i)
        if (!rows->Items(i)->IsDeleted()) return SetTopRow(RowRef(rows->Items(i)), i);
    for (qint16 i = std::min(position, rows->Count()); i >= 1; --i)
        if (!rows->Items(i)->IsDeleted()) return SetTopRow(RowRef(rows->Items(i)), i);
}

qint16 GridLayout::TopPosition() {
    if (!state_.topRow) return -1;
    const KelEditGridRowList& rows = *state_.rows;
    const bool known = topPosition_ >= 1 && topPosition_ <= rows.Count() &&
                       rows.Items(topPosition_) == state_.topRow;
    if (known) return topPosition_;
    const qint16 found = rows.IndexOf(state_.topRow);
    if (found > 0) topPosition_ = found;
    return found;
}

void GridLayout::Redraw() {
    std::vector<RowRef> lines;
    const auto room = static_cast<size_t>(geometry_.LinesShown());
    const RowListRef rows = state_.rows;
    const qint16 top = TopPosition();
    for (qint16 i = top; i >= 1 && i <= rows->Count() && lines.size() < room; ++i) {
        const RowRef row = rows->Items(i);
        if (!row->IsDeleted()) lines.push_back(row);
    }
    state_.lines = std::move(lines);
    screen_.Repaint();
}

int GridLayout::LineOf(const KelEditGridRow& row) const {
    const auto& lines = state_.lines;
    const auto drawn = std::find_if(lines.begin(), lines.end(),
                                    [&row](const RowRef& line) { return line.get() == &row; });
    if (drawn != lines.end()) return static_cast<int>(drawn - lines.begin());
    return row.VisibleIndex() - (state_.topRow ? state_.topRow->VisibleIndex() : 0);
}

void GridLayout::ScrollBack(qint32 offset) {
    state_.horizontalOffset = offset;
    screen_.SetHorizontalValue(offset);
}

GridLayout::DrawnCell GridLayout::CellAt(double x, double y) const {
    DrawnCell cell;
    if (x < GridGeometry::LeftMargin || y < 0) return cell;
    const double below = y - geometry_.HeaderHeight();
    if (below >= 0) {
        const auto line = static_cast<size_t>(below / geometry_.RowHeight());
        if (line >= state_.lines.size()) return cell;
        cell.row = state_.lines[line];
    }
    for (qint16 i = 1; i <= state_.columns->Count() && !cell.column; ++i) {
        const QRectF place = geometry_.Cell(*state_.columns->Items(i), state_.horizontalOffset, 0);
        if (x < place.left() || x >= place.right()) continue;
        cell.column = state_.columns->Items(i);
        cell.position = i;
    }
    return cell;
}

void GridLayout::BringRowIntoView(const RowRef& row, qint16 position) {
    const qint16 number = row->VisibleIndex();
    const qint16 top = state_.topRow ? state_.topRow->VisibleIndex() : qint16{0};
    if (state_.topRow && number >= top && number < top + state_.rowsThatFit) return;
    SetTopRow(row, position);
    FollowTopRow();
}

bool GridLayout::BringIntoView(const KelEditGridColumn& column) {
    const double room = geometry_.Width() - GridGeometry::LeftMargin - geometry_.BarWidth();
    const double right = double(column.Left) + column.Width - room;
    double offset = std::max<double>(state_.horizontalOffset, right);
    offset = std::min<double>(offset, column.Left);
    const auto wanted = static_cast<qint32>(std::nearbyint(offset));
    const qint32 before = state_.horizontalOffset;
    if (wanted != before) state_.horizontalOffset = screen_.SetHorizontalValue(wanted);
    return state_.horizontalOffset != before;
}

void GridLayout::HideEditors() {
    editors_.HideAll();
    state_.currentColumn = 0;
}

}  // namespace quarv
