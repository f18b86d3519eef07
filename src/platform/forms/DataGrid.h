// DataGrid: shows the rows of a RowSource, to be read and copied. Rows are read on as they come
// near the screen. It translates what the user does and keeps reading and telling apart; what a
// cell looks like, how it is copied and when rows are read is decided elsewhere.
#pragma once

#include <QTableView>

#include "platform/forms/Control.h"
#include "platform/forms/DataGridCopy.h"
#include "platform/forms/RowReader.h"

namespace quarv::forms {

class DataGridDelegate;
class DataGridModel;
class RowNumberHeader;

class DataGrid : public QTableView, public Control {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES

  public:
    DataGrid(QWidget* container, const QString& name);

    // Shows the source from its first row, with columns as wide as their first rows ask for; rows
    // for a screen and another one are read before it returns. Not owned, must outlive the grid or
    // the next call; null shows nothing and forgets what was not told
    // yet. To be called again, with the same source too, whenever
    // the source holds another result. What reading raises is told by Error.
    void SetDataSource(RowSource* source);
    RowSource* DataSource() const { return reader_.Source(); }

    // Put the selected cells, without any the current one, on the clipboard; nothing where there
    // is none. Text of more than 2^30 UTF-16 units is refused, told by Error.
    Q_INVOKABLE void Copy();
    Q_INVOKABLE void CopyWithHeaders();
    // Reads to the end of the result, selects all cells and shows the last row.
    void selectAll() override;

  Q_SIGNALS:
    // An error met while reading or copying, each once and when the grid is ready for anything,
    // also for another data source. Number 0 where it was no error of the system's own.
    void Error(int number, const QString& description);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers held) override;
    // Searching a column would walk all rows.
    void keyboardSearch(const QString&) override {}
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

  protected Q_SLOTS:
    void updateGeometries() override;
    void verticalScrollbarValueChanged(int value) override;

  private:
    void SetUpHeaders();
    void ApplyFont();
    void SizeColumns();
    void ShowHeaders(bool show);
    // The 0-based row to read to now; -1 where there are enough.
    qint64 RowWanted() const;
    void ReadAhead();
    void ReadToEnd();
    void ReadTo(qint64 row);
    void ShowLastRow();
    void BarActed(int action);
    CellBlock BlockToCopy() const;
    void CopyBlock(bool withHeaders);
    // At once, or once events are handled again.
    void TellErrors();
    void TellErrorsSoon();

    RowReader reader_;
    Errors errors_;      // met and not yet told
    bool busy_ = false;  // reading, or changing the source
    bool telling_ = false;
    bool tooManyRows_ = false;  // of this result, and told
    DataGridModel* model_;
    DataGridDelegate* delegate_;
    RowNumberHeader* numbers_;
};

}  // namespace quarv::forms
