#include "grid/GridEditorAccess.h"

#include "grid/KelEditGrid.h"
#include "platform/forms/TextBox.h"

namespace quarv {

namespace {

QAccessibleInterface* MakeFor(const QString&, QObject* object) {
    auto* box = qobject_cast<forms::TextBox*>(object);
    const bool onGrid = box && qobject_cast<KelEditGrid*>(box->parentWidget());
    return onGrid ? new GridEditorAccess(box) : nullptr;
}

}  // namespace

void GridEditorAccess::Install() {
    QAccessible::installFactory(MakeFor);
}

QAccessibleInterface* GridEditorAccess::parent() const {
    QAccessibleInterface* grid = QAccessibleWidget::parent();
    QAccessibleTableInterface* table = grid ? grid->tableInterface() : nullptr;
    if (table == nullptr) return grid;
    for (QAccessibleInterface* cell : table->selectedCells())
        if (cell->indexOfChild(this) >= 0) return cell;
    return grid;
}

}  // namespace quarv
