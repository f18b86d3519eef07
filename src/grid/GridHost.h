// GridHost: what editing in a grid tells and asks the program around it. The control implements it
// by raising its events, and ends there what a handler of the program raises. A row passed by
// reference may be replaced by the program.
#pragma once

#include <QString>
#include <optional>

#include "grid/KelEditGridColumn.h"
#include "grid/KelEditGridRow.h"

namespace quarv {

class GridHost {
  public:
    virtual ~GridHost() = default;

    // `row` comes as nothing; left so, the new row is refused.
    virtual void AddRow(RowRef& row) = 0;
    virtual void DeleteRow(RowRef& row) = 0;
    virtual void RowSelected(RowRef& row) = 0;
    virtual void ColumnChanged(RowRef& row, ColumnRef& column) = 0;
    virtual void CustomColumnElipsis(RowRef& row, ColumnRef& column) = 0;
    virtual void GetDirectoryForBrowse(RowRef& row, ColumnRef& column, QString& directory) = 0;

    // Lets the user choose a file; nothing where the choice was given up.
    virtual std::optional<QString> ChooseFile(const QString& directory,
                                              const KelEditGridColumn& column) = 0;
    // A cell was entered that no editor is for.
    virtual void ShowNoEditor() = 0;

  protected:
    GridHost() = default;
    GridHost(const GridHost&) = default;
    GridHost& operator=(const GridHost&) = default;
};

}  // namespace quarv
