#include "grid/KelEditGridAccess.h"

#include <algorithm>

#include "controls/RButton.h"
#include "grid/GridCellAccess.h"
#include "grid/GridEditorAccess.h"
#include "grid/GridHeadingAccess.h"
#include "grid/KelEditGrid.h"
#include "platform/forms/Application.h"
#include "platform/forms/Twips.h"

namespace quarv {

using forms::Application;
using forms::ToPixels;
using forms::ToTwips;

namespace {

QAccessibleInterface* MakeFor(const QString&, QObject* object) {
    auto* grid = qobject_cast<KelEditGrid*>(object);
    return grid == nullptr ? nullptr : new KelEditGridAccess(grid);
}

}  // namespace

KelEditGridAccess::KelEditGridAccess(KelEditGrid* grid)
    : QAccessibleWidget(grid, QAccessible::Table), partsShape_(CurrentShape()), teller_(*this) {}

void KelEditGridAccess::Install() {
    QAccessible::installFactory(MakeFor);
    GridEditorAccess::Install();
}

KelEditGridAccess* KelEditGridAccess::Of(KelEditGrid& grid) {
    return dynamic_cast<KelEditGridAccess*>(QAccessible::queryAccessibleInterface(&grid));
}

void KelEditGridAccess::NoteChange(KelEditGrid& grid) {
    if (!QAccessible::isActive()) return;
    if (const KelEditGridAccess* view = Of(grid)) view->Later();
}

void KelEditGridAccess::NoteFocus(KelEditGrid& grid) {
    if (!QAccessible::isActive()) return;
    KelEditGridAccess* view = Of(grid);
    if (view == nullptr) return;
    view->teller_.NoteFocus();
    view->Later();
}

// Its work is done when the grid has settled: an event passes through states that nobody is to see.
void KelEditGridAccess::Later() const {
    KelEditGrid* grid = Grid();
    if (waiting_ || grid == nullptr) return;
    waiting_ = true;
    const auto tell = [grid] {
        if (KelEditGridAccess* view = Of(*grid)) view->TellChanges();
    };
    QMetaObject::invokeMethod(grid, tell, Qt::QueuedConnection);
}

void KelEditGridAccess::TellChanges() {
    waiting_ = false;
    parts_.DeleteRetired();
    if (QAccessible::isActive()) teller_.Tell();
}

KelEditGrid* KelEditGridAccess::Grid() const {
    return qobject_cast<KelEditGrid*>(object());
}

GridShape KelEditGridAccess::CurrentShape() const {
    const KelEditGrid* grid = Grid();
    return grid ? GridShape(grid->State()) : GridShape();
}

bool KelEditGridAccess::HoldsParts() const {
    const KelEditGrid* grid = Grid();
    return grid && partsShape_.IsThatOf(grid->State());
}

GridPartAccess* KelEditGridAccess::Part(int row, int column) const {
    if (!HoldsParts()) {
        partsShape_ = CurrentShape();
        parts_.RetireAll();
        if (parts_.HasRetired()) Later();
    }
    if (column < 0 || column >= partsShape_.ColumnCount()) return nullptr;
    if (row < GridPartAccess::Headings || row >= partsShape_.RowCount()) return nullptr;
    if (GridPartAccess* known = parts_.Find(row, column)) return known;
    auto& self = const_cast<KelEditGridAccess&>(*this);
    if (row == GridPartAccess::Headings)
        return parts_.Keep(std::make_unique<GridHeadingAccess>(self, column));
    return parts_.Keep(std::make_unique<GridCellAccess>(self, row, column));
}

qint16 KelEditGridAccess::PositionOf(int row) const {
    qint16 position = 0;
    if (const KelEditGrid* grid = Grid())
        Application::RunEvent([&] { position = numbers_.PositionOf(*grid->State().rows, row); });
    return position;
}

RowRef KelEditGridAccess::RowOf(int row) const {
    const qint16 position = PositionOf(row);
    return position > 0 ? Grid()->State().rows->Items(position) : nullptr;
}

int KelEditGridAccess::CurrentRow() const {
    const KelEditGrid* grid = Grid();
    if (grid == nullptr) return -1;
    int row = -1;
    Application::RunEvent(
        [&] { row = numbers_.NumberAt(*grid->State().rows, grid->State().currentPosition); });
    return row;
}

int KelEditGridAccess::CurrentColumn() const {
    const KelEditGrid* grid = Grid();
    return grid ? grid->State().currentColumn - 1 : -1;
}

QList<QWidget*> KelEditGridAccess::EditorParts() const {
    QList<QWidget*> parts;
    const KelEditGrid* grid = Grid();
    QWidget* editor = grid ? grid->ShownEditor() : nullptr;
    if (editor == nullptr) return parts;
    parts.append(editor);
    for (RButton* button : grid->findChildren<RButton*>(QString(), Qt::FindDirectChildrenOnly))
        if (button->Visible()) parts.append(button);
    return parts;
}

QRect KelEditGridAccess::PlaceOf(int row, int column) const {
    const KelEditGrid& grid = *Grid();
    const GridState& state = grid.State();
    const GridGeometry& geometry = grid.Geometry();
    int line = 0;
    if (row != GridPartAccess::Headings) {
        const auto drawn = std::find(state.lines.begin(), state.lines.end(), RowOf(row));
        if (drawn == state.lines.end()) return {};
        line = static_cast<int>(drawn - state.lines.begin());
    }
    const auto& info = *state.columns->Items(static_cast<qint16>(column + 1));
    QRectF place = geometry.Cell(info, state.horizontalOffset, line);
    if (row == GridPartAccess::Headings) {
        place.setTop(0);
        place.setBottom(geometry.HeaderHeight());
    }
    place.setLeft(std::max<double>(place.left(), GridGeometry::LeftMargin));
    const QRect pixels(QPoint(ToPixels(place.left()), ToPixels(place.top())),
                       QPoint(ToPixels(place.right()) - 1, ToPixels(place.bottom()) - 1));
    const QRect shown = pixels & grid.rect();
    return shown.isEmpty() ? QRect() : QRect(grid.mapToGlobal(shown.topLeft()), shown.size());
}

void KelEditGridAccess::Enter(int row, int column) {
    KelEditGrid* grid = Grid();
    const qint16 position = PositionOf(row);
    if (position < 1) return;
    Application::RunEvent([&] { grid->EnterCell(position, static_cast<qint16>(column + 1)); });
}

QString KelEditGridAccess::text(QAccessible::Text kind) const {
    const KelEditGrid* grid = Grid();
    return kind == QAccessible::Name && grid ? grid->SpokenName() : QAccessibleWidget::text(kind);
}

QAccessible::State KelEditGridAccess::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.focusable = true;
    // A current cell has the keyboard in the table's place.
    if (selectedCellCount() > 0) state.focused = false;
    return state;
}

int KelEditGridAccess::childCount() const {
    return (rowCount() + 1) * columnCount();
}

QAccessibleInterface* KelEditGridAccess::child(int index) const {
    const int columns = columnCount();
    if (index < 0 || columns == 0) return nullptr;
    return Part(index / columns - 1, index % columns);
}

std::optional<int> KelEditGridAccess::RowAt(int y) const {
    const KelEditGrid& grid = *Grid();
    const GridState& state = grid.State();
    const double below = ToTwips(y) - grid.Geometry().HeaderHeight();
    if (below < 0) return GridPartAccess::Headings;
    const auto line = static_cast<size_t>(below / grid.Geometry().RowHeight());
    if (line >= state.lines.size()) return std::nullopt;
    const int row = numbers_.NumberAt(*state.rows, state.rows->IndexOf(state.lines[line]));
    return row < 0 ? std::nullopt : std::optional(row);
}

QAccessibleInterface* KelEditGridAccess::childAt(int x, int y) const {
    const KelEditGrid* grid = Grid();
    const QPoint at(x, y);
    if (grid == nullptr || !rect().contains(at)) return nullptr;
    std::optional<int> row;
    Application::RunEvent([&] { row = RowAt(grid->mapFromGlobal(at).y()); });
    if (!row) return nullptr;
    for (int i = 0; i < columnCount(); ++i)
        if (PlaceOf(*row, i).contains(at)) return Part(*row, i);
    return nullptr;
}

int KelEditGridAccess::indexOfChild(const QAccessibleInterface* child) const {
    const auto* part = dynamic_cast<const GridPartAccess*>(child);
    if (part == nullptr || &part->Table() != this || !part->isValid()) return -1;
    return (part->Row() + 1) * columnCount() + part->Column();
}

QAccessibleInterface* KelEditGridAccess::focusChild() const {
    const QList<QWidget*> editors = EditorParts();
    if (editors.isEmpty()) return cellAt(CurrentRow(), CurrentColumn());
    // A text box hands the keyboard on to what it is made of.
    QWidget* inner = editors.first()->focusProxy();
    return QAccessible::queryAccessibleInterface(inner ? inner : editors.first());
}

void* KelEditGridAccess::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessibleInterface* KelEditGridAccess::cellAt(int row, int column) const {
    return row < 0 ? nullptr : Part(row, column);
}

int KelEditGridAccess::rowCount() const {
    return CurrentShape().RowCount();
}

int KelEditGridAccess::columnCount() const {
    return CurrentShape().ColumnCount();
}

QString KelEditGridAccess::columnDescription(int column) const {
    if (column < 0 || column >= columnCount()) return {};
    return Grid()->State().columns->Items(static_cast<qint16>(column + 1))->Name;
}

int KelEditGridAccess::selectedCellCount() const {
    return static_cast<int>(selectedCells().size());
}

QList<QAccessibleInterface*> KelEditGridAccess::selectedCells() const {
    QAccessibleInterface* cell = cellAt(CurrentRow(), CurrentColumn());
    if (cell == nullptr) return {};
    return {cell};
}

int KelEditGridAccess::selectedRowCount() const {
    return static_cast<int>(selectedRows().size());
}

QList<int> KelEditGridAccess::selectedRows() const {
    const int row = CurrentRow();
    if (row < 0) return {};
    return {row};
}

bool KelEditGridAccess::isRowSelected(int row) const {
    return row >= 0 && row == CurrentRow();
}

bool KelEditGridAccess::selectRow(int row) {
    const KelEditGrid* grid = Grid();
    if (grid == nullptr || !grid->isEnabled() || row < 0 || row >= rowCount()) return false;
    if (!isRowSelected(row)) Enter(row, -1);
    return isRowSelected(row);
}

void KelEditGridAccess::modelChange(QAccessibleTableModelChangeEvent*) {
    parts_.RetireAll();
    if (parts_.HasRetired()) Later();
}

}  // namespace quarv
