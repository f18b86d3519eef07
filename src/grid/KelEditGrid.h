// KelEditGrid: shows the rows of a row list in the columns of a column list and edits one cell at a
// time with an editor laid over it. The host owns rows, columns and values; the grid keeps
// references to both lists and reads the host's later changes through them. It translates events
// into what layout, editing and navigation do, and paints; it decides nothing itself. A handler of
// its events may change rows and lists, but destroys the grid by deleteLater alone.
#pragma once

#include <memory>

#include "base/Value.h"
#include "grid/GridKeyboard.h"
#include "grid/GridWheel.h"
#include "platform/drawing/PaintedPictures.h"
#include "platform/drawing/TextFitter.h"
#include "platform/forms/UserControl.h"

class QHelpEvent;

namespace quarv {

class GridBars;
class GridEditors;
class GridEvents;

namespace forms {
class CommonDialog;
class TextBox;
}  // namespace forms

class KelEditGrid : public forms::UserControl {
    Q_OBJECT

  public:
    KelEditGrid(QWidget* container, const QString& name);
    ~KelEditGrid() override;

    // Keep a reference to the host's list; no cell is edited then. Raise ObjectNotSet for none, and
    // Overflow where the widths of the columns do not add up within 32 bits.
    Q_INVOKABLE void SetColList(const std::shared_ptr<KelEditGridColumnList>& List) {
        layout_.SetColList(List);
    }
    Q_INVOKABLE void SetRowList(const std::shared_ptr<KelEditGridRowList>& List) {
        layout_.SetRowList(List);
    }
    const RowListRef& RowList() const { return state_.rows; }

    // For the host, after it has added or removed rows.
    void NumVisibleMayHaveChanged() { layout_.NumVisibleMayHaveChanged(); }
    // For the host, after it has changed the rows: repairs which one is shown first.
    void DataHasChanged() { layout_.DataHasChanged(); }
    // Lays the columns out anew, scrolled to the left end.
    void SetWidths() { editing_.SetWidths(); }
    // Repaints everything, pictures that were painted onto the grid aside.
    void Redraw() { layout_.Redraw(); }

    // Writes the edited cell back and closes its editor. For the host, before it saves.
    void CommitAnyChanges() { editing_.CommitAnyChanges(); }
    // Asks the host for a new row and selects it; with `ActivateHelper` presses the button of its
    // first cell where there is one. Nothing where the host refused.
    RowRef AddRowMode(bool& ActivateHelper) { return editing_.AddRowMode(ActivateHelper); }
    // Removes the current row; nothing without one.
    void DeleteCurrentRow() { editing_.DeleteCurrentRow(); }
    // Selects nothing and shows the first rows and columns.
    void ChangeToSetup() { editing_.ChangeToSetup(); }

    // Paints a picture onto the grid, until the next Redraw. Lengths are twips; what each argument
    // is and what is raised: drawing::PaintPictureArguments and PaintedPictures::Add.
    Q_INVOKABLE void PaintPicture(const quarv::ObjectRef& Picture, float X1, float Y1,
                                  const quarv::Value& Width1 = {}, const quarv::Value& Height1 = {},
                                  const quarv::Value& X2 = {}, const quarv::Value& Y2 = {},
                                  const quarv::Value& Width2 = {}, const quarv::Value& Height2 = {},
                                  const quarv::Value& Opcode = {});

    // What is shown and selected now, for assistive tools.
    const GridState& State() const { return state_; }
    const GridGeometry& Geometry() const { return geometry_; }
    // Does what a click on the cell would do.
    void EnterCell(qint16 row, qint16 column);
    // The editor over the current cell; null where none is shown.
    QWidget* ShownEditor() const;

  Q_SIGNALS:
    // Rows passed by reference may be replaced by the host.

    // `Row` comes as nothing; left so, the new row is refused.
    void AddRow(quarv::RowRef& Row);
    void DeleteRow(quarv::RowRef& Row);
    // Nothing after ChangeToSetup.
    void RowSelected(quarv::RowRef& Row);
    void ColumnChanged(quarv::RowRef& Row, quarv::ColumnRef& Column);
    void CustomColumnElipsis(quarv::RowRef& Row, quarv::ColumnRef& Column);
    // The host fills in where browsing starts.
    void GetDirectoryForBrowse(quarv::RowRef& Row, quarv::ColumnRef& Column, QString& Directory);
    // The platform's own events, unchanged: accepted or refused by whoever handles them.
    void OLEDragDrop(QDropEvent* event);
    void OLEDragOver(QDragMoveEvent* event);

  protected:
    void UserControl_Resize() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    GridMetrics Metrics() const;
    void Connect();
    void ShowAll();
    void OnKey(GridKey key);
    void LeaveByTab(bool forward);
    // The tool tip of a cell whose text is cut.
    void ShowWholeText(const QHelpEvent& help);

    GridState state_;
    GridEditors* editors_;
    GridBars* bars_;
    forms::TextBox* focusTaker_;
    forms::CommonDialog* finder_;
    std::unique_ptr<GridEvents> events_;
    GridGeometry geometry_;
    GridLayout layout_;
    GridEditing editing_;
    GridNavigation navigation_;
    GridKeyboard keyboard_;
    GridWheel wheel_;
    drawing::TextFitter fitter_;
    drawing::PaintedPictures painted_;
};

}  // namespace quarv
