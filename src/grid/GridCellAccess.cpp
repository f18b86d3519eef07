#include "grid/GridCellAccess.h"

#include <QWidget>

#include "grid/CellRules.h"
#include "grid/KelEditGrid.h"
#include "grid/KelEditGridAccess.h"
#include "platform/forms/Application.h"

namespace quarv {

using forms::Application;

Value GridCellAccess::Content() const {
    Value content;
    Application::RunEvent([&] {
        if (const RowRef row = Table().RowOf(Row()))
            content = row->ColumnValue(static_cast<qint16>(Column() + 1));
    });
    return content;
}

QString GridCellAccess::Name() const {
    // Held: the row may replace the columns while it is asked.
    const ColumnRef column = ColumnInfo();
    const Value content = Content();
    if (column->Is(CellKind::Check) && content.kind() == Value::Kind::Boolean) return column->Name;
    return ShownText(*column, content).left(MostUnits);
}

QAccessible::Role GridCellAccess::role() const {
    const bool check = isValid() && ColumnInfo()->Is(CellKind::Check);
    return check ? QAccessible::CheckBox : QAccessible::Cell;
}

QAccessible::State GridCellAccess::state() const {
    QAccessible::State state = GridPartAccess::state();
    const KelEditGrid* grid = Grid();
    if (grid == nullptr) return state;
    const ColumnRef column = ColumnInfo();
    const bool check = column->Is(CellKind::Check);
    state.selectable = true;
    state.focusable = true;
    state.selected = isSelected();
    // The editor over a cell has the keyboard itself.
    state.focused = state.selected && grid->hasFocus();
    state.editable = !check && FindCellRule(*column) != nullptr;
    state.checkable = check;
    if (!check) return state;
    const Value content = Content();
    state.checked = content.kind() == Value::Kind::Boolean && content.ToBoolean();
    return state;
}

int GridCellAccess::childCount() const {
    return isSelected() ? static_cast<int>(Table().EditorParts().size()) : 0;
}

QAccessibleInterface* GridCellAccess::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    return QAccessible::queryAccessibleInterface(Table().EditorParts().at(index));
}

QAccessibleInterface* GridCellAccess::childAt(int x, int y) const {
    for (int i = 0; i < childCount(); ++i)
        if (QAccessibleInterface* part = child(i); part && part->rect().contains(x, y)) return part;
    return nullptr;
}

int GridCellAccess::indexOfChild(const QAccessibleInterface* child) const {
    for (int i = 0; child && i < childCount(); ++i)
        if (this->child(i) == child) return i;
    return -1;
}

QAccessibleInterface* GridCellAccess::focusChild() const {
    return isSelected() ? Table().focusChild() : nullptr;
}

void* GridCellAccess::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface*>(this);
    if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

bool GridCellAccess::isSelected() const {
    return isValid() && Table().CurrentRow() == Row() && Table().CurrentColumn() == Column();
}

QList<QAccessibleInterface*> GridCellAccess::columnHeaderCells() const {
    if (!isValid()) return {};
    return {Table().Part(Headings, Column())};
}

QStringList GridCellAccess::actionNames() const {
    const KelEditGrid* grid = Grid();
    return grid && grid->isEnabled() ? QStringList{pressAction()} : QStringList();
}

// What the grid's handlers do may end this very object: it is not touched afterwards.
void GridCellAccess::doAction(const QString& action) {
    if (actionNames().contains(action)) Table().Enter(Row(), Column());
}

}  // namespace quarv
