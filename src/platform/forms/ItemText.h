// ItemText: how the items of lists and trees show texts that may hold anything, and how their keys
// compare. For the models of ListView and TreeView.
#pragma once

#include <QString>

class QAbstractItemView;
class QHelpEvent;

namespace quarv::forms {

// The role under which the models give an item's text whole.
inline constexpr int WholeTextRole = Qt::UserRole;

// One line to paint: control characters and line ends as blanks, cut where no screen reaches.
QString ShownText(const QString& text);

// What two keys have in common that differ only in letter case.
QString FoldKey(const QString& key);

// A tool tip that shows `text` with its lines, plain whatever it looks like; long words may wrap.
QString PlainToolTip(const QString& text);

// Shows an item's whole text, plain, where its cell or the window cuts it off.
void ShowCutOffText(QAbstractItemView& view, const QHelpEvent& event);

}  // namespace quarv::forms
