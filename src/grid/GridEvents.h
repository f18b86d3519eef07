// GridEvents: raises the grid's events for its editing. What a handler of the program raises ends
// in the event it was raised for. The grid owns it.
#pragma once

#include "grid/GridHost.h"

namespace quarv {

class KelEditGrid;

namespace forms {
class CommonDialog;
}  // namespace forms

class GridEvents : public GridHost {
  public:
    // Both outlive it.
    GridEvents(KelEditGrid& grid, forms::CommonDialog& finder) : grid_(grid), finder_(finder) {}

    void AddRow(RowRef& row) override;
    void DeleteRow(RowRef& row) override;
    void RowSelected(RowRef& row) override;
    void ColumnChanged(RowRef& row, ColumnRef& column) override;
    void CustomColumnElipsis(RowRef& row, ColumnRef& column) override;
    void GetDirectoryForBrowse(RowRef& row, ColumnRef& column, QString& directory) override;
    std::optional<QString> ChooseFile(const QString& directory,
                                      const KelEditGridColumn& column) override;
    void ShowNoEditor() override;

  private:
    KelEditGrid& grid_;
    forms::CommonDialog& finder_;
};

}  // namespace quarv
