// TableColumnSink: where a table's columns go while they are read: a list of items with sub-items
// counted from 1. The pane implements it over its list view; whoever reads knows no widget.
#pragma once

#include <QString>

namespace quarv {

class TableColumnSink {
  public:
    virtual ~TableColumnSink() = default;

    // A new item whose key and text are both `name`.
    virtual void AddItem(const QString& name) = 0;
    // A text of the item that was added last.
    virtual void SetSubItem(int index, const QString& text) = 0;
};

}  // namespace quarv
