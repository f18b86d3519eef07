#include "grid/GridEditing.h"

#include <QScopedValueRollback>
#include <utility>

#include "grid/CellRules.h"

namespace quarv {

GridEditing::GridEditing(GridState& state, GridGeometry& geometry, GridLayout& layout,
                         CellEditors& editors, GridHost& host)
    : state_(state), geometry_(geometry), layout_(layout), editors_(editors), host_(host) {}

ColumnRef GridEditing::CurrentColumn() const {
    const qint16 c = state_.currentColumn;
    if (c <= 0 || c > state_.columns->Count()) return nullptr;
    return state_.columns->Items(c);
}

// A handler of ColumnChanged may ask for a commit of its own: the cell is written already.
void GridEditing::Commit() {
    ColumnRef column = CurrentColumn();
    if (state_.mode == GridMode::NoRow || !column || !state_.currentRow || committing_) return;
    const QScopedValueRollback<bool> committing(committing_, true);
    if (const CellRule* rule = FindCellRule(*column)) {
        const RowRef row = state_.currentRow;
        row->SetColumnValue(state_.currentColumn, rule->read(editors_, *column));
    }
    host_.ColumnChanged(state_.currentRow, column);
}

void GridEditing::LeaveAddRowMode() {
    if (state_.mode != GridMode::NewRow) return;
    const RowRef row = state_.currentRow;
    if (row && row->IsEmpty())
        DropNewRow();
    else
        state_.mode = GridMode::Row;
}

void GridEditing::CommitAnyChanges() {
    try {
        Commit();
        LeaveAddRowMode();
        layout_.HideEditors();
    } catch (...) {
        layout_.Redraw();
        throw;
    }
    layout_.Redraw();
}

RowRef GridEditing::AddRowMode(bool& activateHelper) {
    Select(GridGeometry::AddRowLine, 1);
    if (editors_.IsButtonShown() && activateHelper) PressElipsis();
    return state_.currentRow;
}

void GridEditing::DeleteCurrentRow() {
    const RowRef row = state_.currentRow;
    if (!row) return;
    const qint16 position = state_.currentPosition;
    host_.DeleteRow(state_.currentRow);
    // The handler may have changed the rows itself.
    KelEditGridRowList& rows = *state_.rows;
    const bool there = position >= 1 && position <= rows.Count() && rows.Items(position) == row;
    const qint16 found = there ? position : rows.IndexOf(row);
    if (found > 0) rows.Remove(found);
    ChangeToSetup();
}

void GridEditing::ChangeToSetup() {
    Deselect();
    layout_.SetTopRow(nullptr, 0);
    layout_.NumVisibleMayHaveChanged();
    layout_.DataHasChanged();
    layout_.SetWidths();
    RowRef none;
    host_.RowSelected(none);
}

void GridEditing::Deselect() {
    layout_.HideEditors();
    state_.mode = GridMode::NoRow;
    state_.currentPosition = 0;
    state_.currentRow = nullptr;
}

// Only the new row itself is dropped: what the host has put behind it, or into another list, stays.
void GridEditing::DropNewRow() {
    KelEditGridRowList& rows = *state_.rows;
    const qint16 last = rows.Count();
    if (last > 0 && rows.Items(last) == state_.currentRow) rows.Remove(last);
    Deselect();
    layout_.NumVisibleMayHaveChanged();
    layout_.Redraw();
}

bool GridEditing::Select(qint32 p, qint16 c) {
    if (p > state_.rows->Count()) return false;
    if (p == GridGeometry::AddRowLine) return SelectNewRow(c);
    if (state_.topRow && p != state_.currentPosition) SelectRow(Narrow16(p));
    if (!state_.topRow || !state_.currentRow) return false;
    Place(c);
    return true;
}

bool GridEditing::SelectNewRow(qint16 c) {
    Deselect();
    layout_.Redraw();
    RowRef row;
    host_.AddRow(row);
    if (!row) return false;
    const RowListRef rows = state_.rows;
    rows->Add(row);
    if (rows->Count() == 1) layout_.SetTopRow(row, 1);
    layout_.NumVisibleMayHaveChanged();
    layout_.Redraw();
    if (state_.topRow) SelectRow(rows->Count());
    // The handler may have dropped it at once.
    if (state_.currentRow != row) return false;
    state_.mode = GridMode::NewRow;
    Place(c);
    return true;
}

void GridEditing::SelectRow(qint16 p) {
    const RowRef row = state_.rows->Items(p);
    layout_.BringRowIntoView(row, p);
    layout_.HideEditors();
    state_.mode = GridMode::Row;
    state_.currentPosition = p;
    state_.currentRow = row;
    layout_.Redraw();
    host_.RowSelected(state_.currentRow);
}

void GridEditing::Enter(qint32 p, qint16 c) {
    Commit();
    if (p == state_.currentPosition) return Place(c);
    LeaveAddRowMode();
    Select(p, c);
}

void GridEditing::EnterInView(qint32 p, qint16 c) {
    if (p == state_.currentPosition && state_.currentRow) {
        layout_.BringRowIntoView(state_.currentRow, state_.currentPosition);
        layout_.Redraw();
    }
    Enter(p, c);
    Reveal();
}

QRectF GridEditing::PlaceOf(const KelEditGridColumn& column, const KelEditGridRow& row) const {
    return geometry_.Cell(column, state_.horizontalOffset, layout_.LineOf(row));
}

void GridEditing::Place(qint16 c) {
    layout_.HideEditors();
    const RowRef row = state_.currentRow;
    if (c <= 0 || c > state_.columns->Count() || !row) return;
    const ColumnRef column = state_.columns->Items(c);
    const CellRule* rule = FindCellRule(*column);
    if (rule) {
        const QRectF place = PlaceOf(*column, *row);
        rule->show(editors_, *column, row->ColumnValue(c), place);
    }
    state_.currentColumn = c;
    if (!rule) host_.ShowNoEditor();
}

void GridEditing::Release(double x, double y) {
    const auto lines = static_cast<int>(state_.lines.size());
    const qint16 top = state_.topRow ? state_.topRow->VisibleIndex() : qint16{0};
    const qint32 p = geometry_.RowHit(y, lines, top);
    if (p < 1 && p != GridGeometry::AddRowLine) return;
    Enter(p, GridGeometry::ColumnHit(x, *state_.columns));
}

void GridEditing::Escape() {
    if (state_.mode == GridMode::NewRow) {
        DropNewRow();
    } else if (state_.mode == GridMode::Row) {
        Place(state_.currentColumn);
    }
}

void GridEditing::EnterKey() {
    const qint16 c = state_.currentColumn;
    if (c >= state_.columns->Count()) {
        Select(state_.currentPosition + 1, 1);
        return;
    }
    Commit();
    Place(static_cast<qint16>(c + 1));
}

void GridEditing::PressElipsis() {
    const ColumnRef column = CurrentColumn();
    if (!column || !state_.currentRow) return;
    if (column->Is(CellKind::Browse)) Browse(column);
    if (column->Is(CellKind::Custom)) AskHost(column);
}

void GridEditing::Browse(ColumnRef column) {
    const RowRef row = state_.currentRow;
    const qint16 c = state_.currentColumn;
    QString directory;
    host_.GetDirectoryForBrowse(state_.currentRow, column, directory);
    if (!column) return;
    const std::optional<QString> path = host_.ChooseFile(directory, *column);
    // Handlers that ran meanwhile may have led to another cell.
    const bool there = state_.currentRow == row && state_.currentColumn == c;
    if (path && there && editors_.IsButtonShown()) editors_.SetText(*path);
}

void GridEditing::AskHost(ColumnRef column) {
    const qint16 c = state_.currentColumn;
    host_.CustomColumnElipsis(state_.currentRow, column);
    const RowRef row = state_.currentRow;
    if (row && state_.currentColumn == c) editors_.SetText(CellText(row->ColumnValue(c)));
    layout_.Redraw();
}

void GridEditing::Reveal() {
    const ColumnRef column = CurrentColumn();
    if (!column || !state_.currentRow || !layout_.BringIntoView(*column)) return;
    editors_.MoveTo(PlaceOf(*column, *state_.currentRow));
    layout_.Redraw();
}

// Where the cell cannot be written the view stays, and the bars with it.
void GridEditing::ScrollVertically(qint16 value) {
    try {
        Commit();
        LeaveAddRowMode();
    } catch (...) {
        layout_.FollowTopRow();
        throw;
    }
    layout_.ShowFrom(value);
    layout_.Redraw();
}

void GridEditing::ScrollHorizontally(qint32 value) {
    const qint32 before = std::exchange(state_.horizontalOffset, value);
    const qint16 c = state_.currentColumn;
    if (state_.mode != GridMode::NoRow && c > 0) {
        try {
            Commit();
        } catch (...) {
            layout_.ScrollBack(before);
            throw;
        }
        Place(c);
    }
    layout_.Redraw();
}

void GridEditing::SetWidths() {
    layout_.SetWidths();
    const ColumnRef column = CurrentColumn();
    if (column && state_.currentRow) editors_.MoveTo(PlaceOf(*column, *state_.currentRow));
    layout_.Redraw();
}

}  // namespace quarv
