// SelectionTeller: tells assistive tools of the cells that were selected in a table, at a cost that
// does not grow with their number. Free functions; the table's view calls them.
#pragma once

class QItemSelection;
class QTableView;

namespace quarv::forms {

// Of the first cell of each, as QTableView does, which lists them all for it. Nothing where no tool
// listens.
void TellOfSelection(QTableView& table, const QItemSelection& selected,
                     const QItemSelection& deselected);

}  // namespace quarv::forms
