#include "platform/forms/DataGrid.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <limits>

#include "base/RuntimeError.h"
#include "platform/forms/Application.h"
#include "platform/forms/DataColumnWidths.h"
#include "platform/forms/DataGridDelegate.h"
#include "platform/forms/DataGridModel.h"
#include "platform/forms/KeyPress.h"
#include "platform/forms/RowNumberHeader.h"
#include "platform/forms/SelectionTeller.h"
#include "platform/forms/WaitCursor.h"

namespace quarv::forms {

namespace {

constexpr qint64 LastRow = std::numeric_limits<qint64>::max();

constexpr QKeyCombination HeadersKey = Qt::CTRL | Qt::SHIFT | Qt::Key_C;

bool TypesCharacter(const QKeyEvent& event) {
    return !IsCommand(event) && KeyAsciiOf(event) > u' ';
}

}  // namespace

DataGrid::DataGrid(QWidget* container, const QString& name)
    : QTableView(container),
      Control(this, container, name),
      model_(new DataGridModel(this)),
      delegate_(new DataGridDelegate(this, *model_)),
      numbers_(new RowNumberHeader(this)) {
    setItemDelegate(delegate_);
    setVerticalHeader(numbers_);
    setModel(model_);
    SetUpHeaders();
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ContiguousSelection);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    setWordWrap(false);
    setTabKeyNavigation(false);
    ApplyFont();
    RefreshSpokenName();
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, &DataGrid::BarActed);
    connect(verticalScrollBar(), &QScrollBar::sliderReleased, this, &DataGrid::updateGeometries);
}

void DataGrid::SetUpHeaders() {
    QHeaderView& headings = *horizontalHeader();
    headings.setTextElideMode(Qt::ElideRight);
    headings.setHighlightSections(false);
    // Painted with the grid's selection they would ask of every row whether it is selected.
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        header->setSelectionModel(new QItemSelectionModel(model_, header));
        header->hide();
    }
}

void DataGrid::ApplyFont() {
    delegate_->SetFont(font());
    numbers_->SetRowHeight(delegate_->RowHeight());
}

void DataGrid::SetDataSource(RowSource* source) {
    {
        // Meanwhile the bar still stands where the earlier result was left.
        const QScopedValueRollback busy(busy_, true);
        reader_.SetSource(source);
        tooManyRows_ = false;
        if (source == nullptr) errors_.clear();
        model_->SetSource(source);
        ShowHeaders(model_->columnCount() > 0);
        scrollToTop();
        horizontalScrollBar()->setValue(0);
        ReadTo(RowWanted());
        SizeColumns();
        setCurrentIndex(model_->index(0, 0));
        clearSelection();
    }
    TellErrors();
}

void DataGrid::ShowHeaders(bool show) {
    horizontalHeader()->setVisible(show);
    numbers_->setVisible(show);
    executeDelayedItemsLayout();
}

void DataGrid::SizeColumns() {
    QHeaderView& headings = *horizontalHeader();
    const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &headings);
    const drawing::TextFitter names(headings.font());
    const std::vector<int> widths =
        DataColumnWidths(*model_, delegate_->Fitter(), names, 4 * margin);
    // Otherwise it would find out after each of them what to paint anew, by a walk over all.
    headings.setUpdatesEnabled(false);
    for (int column = 0; const int width : widths) headings.resizeSection(column++, width);
    headings.setUpdatesEnabled(true);
    updateGeometries();
}

qint64 DataGrid::RowWanted() const {
    const int height = isVisible() ? viewport()->height() : this->height();
    const int rowHeight = numbers_->defaultSectionSize();
    const qint64 screen = std::max(1, (height + rowHeight - 1) / rowHeight);
    return RowReader::RowWanted(verticalScrollBar()->value(), screen, reader_.RowCount());
}

void DataGrid::ReadAhead() {
    if (!busy_ && !reader_.AtEnd()) ReadTo(RowWanted());
}

void DataGrid::ReadToEnd() {
    if (reader_.AtEnd()) return;
    const WaitCursor wait;
    ReadTo(LastRow);
}

void DataGrid::ReadTo(qint64 row) {
    if (row < reader_.RowCount()) return;
    const QScopedValueRollback busy(busy_, true);
    // One row more tells that there are too many.
    reader_.ReadTo(std::min<qint64>(row, DataGridModel::MostRows), errors_);
    if (reader_.RowCount() > DataGridModel::MostRows && !tooManyRows_) {
        tooManyRows_ = true;
        errors_.push_back(
            RuntimeError(RuntimeError::Overflow,
                         QStringLiteral("more than %1 rows").arg(qint64{DataGridModel::MostRows})));
    }
    RowReader::Condense(errors_);
    model_->ShowRowsRead();
    // The bar is to know the rows before the next key or turn of the wheel comes.
    executeDelayedItemsLayout();
    if (!errors_.empty()) TellErrorsSoon();
}

void DataGrid::ShowLastRow() {
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void DataGrid::BarActed(int action) {
    const QScrollBar& bar = *verticalScrollBar();
    const bool draggedToEnd = action == QAbstractSlider::SliderMove && bar.isSliderDown() &&
                              bar.sliderPosition() == bar.maximum();
    if (!draggedToEnd && action != QAbstractSlider::SliderToMaximum) return;
    ReadToEnd();
    // The value follows the position when the bar goes on.
    verticalScrollBar()->setSliderPosition(bar.maximum());
}

void DataGrid::updateGeometries() {
    // The thumb stays under the mouse that holds it, whatever is read meanwhile.
    QScrollBar& bar = *verticalScrollBar();
    const int held =
        bar.isSliderDown() && !reader_.AtEnd() ? bar.maximum() : std::numeric_limits<int>::max();
    QTableView::updateGeometries();
    if (bar.maximum() > held) bar.setMaximum(held);
}

void DataGrid::verticalScrollbarValueChanged(int value) {
    QTableView::verticalScrollbarValueChanged(value);
    ReadAhead();
}

void DataGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    ReadAhead();
}

void DataGrid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange) return;
    ApplyFont();
    ReadAhead();
}

QModelIndex DataGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers held) {
    if (action == MoveEnd && held.testFlag(Qt::ControlModifier)) ReadToEnd();
    return QTableView::moveCursor(action, held);
}

QItemSelectionModel::SelectionFlags DataGrid::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
    constexpr auto Extending = Qt::ControlModifier | Qt::ShiftModifier;
    const bool key = event != nullptr && event->type() == QEvent::KeyPress;
    auto command = QTableView::selectionCommand(index, event);
    // With Ctrl held the table moves alone where Shift is held too.
    if (key && static_cast<const QKeyEvent*>(event)->modifiers().testFlags(Extending))
        command = QItemSelectionModel::SelectCurrent;
    // A block that was read meanwhile made what was selected final; it is to shrink still.
    if (command.testFlag(QItemSelectionModel::Current)) command |= QItemSelectionModel::Clear;
    return command;
}

void DataGrid::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        Copy();
    } else if (event->keyCombination() == HeadersKey) {
        CopyWithHeaders();
    } else if (TypesCharacter(*event)) {
        event->ignore();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void DataGrid::selectAll() {
    ReadToEnd();
    if (model_->rowCount() == 0) return;
    const QItemSelection all(model_->index(0, 0),
                             model_->index(model_->rowCount() - 1, model_->columnCount() - 1));
    selectionModel()->select(all, QItemSelectionModel::ClearAndSelect);
    ShowLastRow();
}

CellBlock DataGrid::BlockToCopy() const {
    const QItemSelection selected = selectionModel()->selection();
    if (!selected.isEmpty()) return BlockAround(selected);
    const QModelIndex cell = currentIndex();
    return cell.isValid() ? BlockAround({cell, cell}) : CellBlock();
}

void DataGrid::Copy() {
    CopyBlock(false);
}

void DataGrid::CopyWithHeaders() {
    CopyBlock(true);
}

void DataGrid::CopyBlock(bool withHeaders) {
    const CellBlock block = BlockToCopy();
    if (block.IsEmpty()) return;
    QStringList names;
    for (int column = 0; withHeaders && column < model_->columnCount(); ++column)
        names.append(model_->ColumnName(column));
    try {
        const WaitCursor wait;
        QApplication::clipboard()->setText(TextOfBlock(*DataSource(), block, names));
    } catch (const quarv::Error& error) {
        errors_.push_back(error);
    } catch (const std::exception& failure) {
        errors_.emplace_back(0, QString::fromUtf8(failure.what()));
    }
    TellErrors();
}

void DataGrid::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [this, menu](const QString& text, const QKeySequence& key, bool enabled,
                                  void (DataGrid::*act)()) {
        QAction* action = menu->addAction(text, this, act);
        action->setShortcut(key);
        action->setShortcutVisibleInContextMenu(true);
        action->setEnabled(enabled);
    };
    const bool copies = !BlockToCopy().IsEmpty();
    add(QStringLiteral("&Copy"), QKeySequence::Copy, copies, &DataGrid::Copy);
    add(QStringLiteral("Copy with &Headers"), HeadersKey, copies, &DataGrid::CopyWithHeaders);
    menu->addSeparator();
    add(QStringLiteral("Select &All"), QKeySequence::SelectAll, model_->rowCount() > 0,
        &DataGrid::selectAll);
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint place = visualRect(currentIndex()).intersected(viewport()->rect()).bottomLeft();
    menu->popup(byKey ? viewport()->mapToGlobal(place) : event->globalPos());
}

void DataGrid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    // Past the table's own, which would list every selected cell to tell of the first.
    TellOfSelection(*this, selected, deselected);
    QAbstractItemView::selectionChanged(selected, deselected);
}

void DataGrid::TellErrorsSoon() {
    QMetaObject::invokeMethod(
        this, [this] { TellErrors(); }, Qt::QueuedConnection);
}

void DataGrid::TellErrors() {
    if (telling_) return;
    telling_ = true;
    const QPointer<DataGrid> self(this);
    while (self && !errors_.empty()) {
        // A box takes the mouse away from whoever holds the thumb.
        verticalScrollBar()->setSliderDown(false);
        const quarv::Error error = errors_.front();
        errors_.pop_front();
        Application::RunEvent([&] { Q_EMIT Error(error.Number(), error.Description()); });
    }
    if (self) telling_ = false;
}

}  // namespace quarv::forms
