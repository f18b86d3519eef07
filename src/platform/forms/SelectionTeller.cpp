#include "platform/forms/SelectionTeller.h"

#include <QAccessible>
#include <QItemSelection>
#include <QTableView>
#include <limits>

namespace quarv::forms {

namespace {

void Tell(QTableView& table, QAccessible::Event event, const QItemSelection& cells) {
    if (cells.isEmpty()) return;
    const QItemSelectionRange& block = cells.first();
    // The headers are children too: each row begins with its number, and the names come first.
    const qint64 rowOfChildren = table.model()->columnCount() + qint64{1};
    const qint64 child = (block.top() + qint64{1}) * rowOfChildren + block.left() + 1;
    if (child > std::numeric_limits<int>::max()) return;
    QAccessibleEvent told(&table, event);
    told.setChild(static_cast<int>(child));
    QAccessible::updateAccessibility(&told);
}

}  // namespace

void TellOfSelection(QTableView& table, const QItemSelection& selected,
                     const QItemSelection& deselected) {
    if (!QAccessible::isActive()) return;
    Tell(table, QAccessible::SelectionAdd, selected);
    Tell(table, QAccessible::SelectionRemove, deselected);
}

}  // namespace quarv::forms
