#include "grid/KelEditGrid.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include "controls/StockPictures.h"
#include "grid/CellRules.h"
#include "grid/GridBars.h"
#include "grid/GridEditors.h"
#include "grid/GridEvents.h"
#include "grid/GridPainter.h"
#include "grid/KelEditGridAccess.h"
#include "platform/drawing/TextMeasure.h"
#include "platform/forms/Application.h"
#include "platform/forms/CommonDialog.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/Twips.h"

namespace quarv {

using forms::Application;
using forms::ToPixels;
using forms::ToTwips;

namespace {

constexpr qsizetype MostTipUnits = 20'000;

}  // namespace

KelEditGrid::KelEditGrid(QWidget* container, const QString& name)
    : forms::UserControl(container, name),
      editors_(new GridEditors(this)),
      bars_(new GridBars(this, [this] { ShowAll(); })),
      focusTaker_(new forms::TextBox(this, QStringLiteral("FocusTaker"))),
      finder_(new forms::CommonDialog(this, QStringLiteral("Finder"))),
      events_(std::make_unique<GridEvents>(*this, *finder_)),
      geometry_(Metrics()),
      layout_(state_, geometry_, *bars_, *editors_),
      editing_(state_, geometry_, layout_, *editors_, *events_),
      navigation_(state_, editing_),
      keyboard_(state_, editing_, navigation_),
      wheel_(state_, *bars_, editing_),
      fitter_(font()) {
    KelEditGridAccess::Install();
    setAcceptDrops(true);
    // Every pixel is painted, so nothing behind the grid has to be.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusProxy(focusTaker_);
    focusTaker_->SetLocked(true);
    focusTaker_->focusProxy()->installEventFilter(this);
    editors_->MakeButtonSquare(geometry_.RowHeight());
    Connect();
}

KelEditGrid::~KelEditGrid() = default;

GridMetrics KelEditGrid::Metrics() const {
    const double bar = bars_->Thickness();
    const QSizeF text = drawing::MeasureText(font(), QStringLiteral("A"));
    return {ToTwips(text.height()), editors_->EditorHeight(), bar, bar};
}

void KelEditGrid::Connect() {
    const auto run = [](auto action) {
        return
            [action](auto... arguments) { Application::RunEvent([&] { action(arguments...); }); };
    };
    connect(editors_, &GridEditors::KeyTyped, this, run([this](GridKey key) { OnKey(key); }));
    connect(editors_, &GridEditors::ButtonClicked, this, run([this] { editing_.PressElipsis(); }));
    connect(editors_, &GridEditors::FocusLeaving, focusTaker_, [this] { focusTaker_->SetFocus(); });
    connect(bars_, &GridBars::VerticalMoved, this,
            run([this](qint16 value) { editing_.ScrollVertically(value); }));
    connect(bars_, &GridBars::HorizontalMoved, this,
            run([this](qint32 twips) { editing_.ScrollHorizontally(twips); }));
}

void KelEditGrid::EnterCell(qint16 row, qint16 column) {
    KelEditGridAccess::NoteChange(*this);
    editing_.EnterInView(row, column);
}

QWidget* KelEditGrid::ShownEditor() const {
    return editors_->Shown();
}

void KelEditGrid::PaintPicture(const ObjectRef& Picture, float X1, float Y1, const Value& Width1,
                               const Value& Height1, const Value& X2, const Value& Y2,
                               const Value& Width2, const Value& Height2, const Value& Opcode) {
    painted_.Add({drawing::PictureIn(Value(Picture)), X1, Y1, Width1, Height1, X2, Y2, Width2,
                  Height2, Opcode});
    update();
}

// The parts lie where they belong before what fits between them is counted.
void KelEditGrid::UserControl_Resize() {
    geometry_.Resize(Width(), Height());
    focusTaker_->Move(0, geometry_.FocusTakerTop(), ToTwips(10), geometry_.RowHeight());
    bars_->Place(geometry_);
    layout_.Resize();
}

void KelEditGrid::ShowAll() {
    const QRect cells(
        QPoint(ToPixels(GridGeometry::LeftMargin), ToPixels(geometry_.HeaderHeight())),
        rect().bottomRight());
    editors_->SetVisiblePart(cells & bars_->Uncovered());
    painted_.Clear();
    update();
    KelEditGridAccess::NoteChange(*this);
}

void KelEditGrid::OnKey(GridKey key) {
    KelEditGridAccess::NoteChange(*this);
    const GridKeyboard::After after = keyboard_.Press(key);
    if (after != GridKeyboard::After::Stay) LeaveByTab(after == GridKeyboard::After::LeaveForward);
}

// The editors are gone by then; from the one part that takes the focus it goes on to what is
// beside the grid.
void KelEditGrid::LeaveByTab(bool forward) {
    editing_.CommitAnyChanges();
    focusTaker_->SetFocus();
    focusNextPrevChild(forward);
}

// Of the part that has the keyboard while no editor is shown.
bool KelEditGrid::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) KelEditGridAccess::NoteFocus(*this);
    if (event->type() != QEvent::KeyPress) return forms::UserControl::eventFilter(watched, event);
    const GridKey key = GridKeyOf(*static_cast<QKeyEvent*>(event), KeyPlace::Text);
    bool used = true;  // a key whose doing raises as well
    KelEditGridAccess::NoteChange(*this);
    Application::RunEvent([&] { used = keyboard_.PressOutside(key); });
    return used || forms::UserControl::eventFilter(watched, event);
}

void KelEditGrid::mousePressEvent(QMouseEvent*) {
    // Accepted, so that the release comes here.
}

void KelEditGrid::mouseReleaseEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    KelEditGridAccess::NoteChange(*this);
    Application::RunEvent([&] { editing_.Release(ToTwips(at.x()), ToTwips(at.y())); });
}

// The bar never keeps the keyboard.
void KelEditGrid::mouseMoveEvent(QMouseEvent* event) {
    if (bars_->HasFocus()) focusTaker_->SetFocus();
    forms::UserControl::mouseMoveEvent(event);
}

void KelEditGrid::wheelEvent(QWheelEvent* event) {
    QPoint turn = event->angleDelta();
    if ((event->modifiers() & Qt::ShiftModifier) != 0) turn = turn.transposed();
    event->accept();
    Application::RunEvent([&] {
        if (turn.x() != 0) wheel_.TurnAside(turn.x());
        if (turn.y() != 0) wheel_.TurnAlong(turn.y());
    });
}

void KelEditGrid::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

void KelEditGrid::dragMoveEvent(QDragMoveEvent* event) {
    event->ignore();
    Application::RunEvent([&] { Q_EMIT OLEDragOver(event); });
}

void KelEditGrid::dropEvent(QDropEvent* event) {
    event->ignore();
    Application::RunEvent([&] { Q_EMIT OLEDragDrop(event); });
}

bool KelEditGrid::event(QEvent* event) {
    if (event->type() == QEvent::FontChange) fitter_ = drawing::TextFitter(font());
    if (event->type() != QEvent::ToolTip) return forms::UserControl::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    Application::RunEvent([&] { ShowWholeText(*help); });
    return true;
}

void KelEditGrid::ShowWholeText(const QHelpEvent& help) {
    const GridLayout::DrawnCell cell =
        layout_.CellAt(ToTwips(help.pos().x()), ToTwips(help.pos().y()));
    QString text;
    if (cell.column)
        text = cell.row ? ShownText(*cell.column, cell.row->ColumnValue(cell.position))
                        : cell.column->Name;
    if (text.isEmpty() || fitter_.Fits(text, ToPixels(cell.column->Width) - TextMargins)) {
        QToolTip::hideText();
        return;
    }
    // More than any screen holds is not laid out; and what looks like markup is text.
    const QString shown = text.left(MostTipUnits).toHtmlEscaped();
    QToolTip::showText(help.globalPos(),
                       QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(shown), this);
}

void KelEditGrid::paintEvent(QPaintEvent* event) {
    const QRect area = event->region().boundingRect();
    Application::RunEvent([&] {
        QPainter painter(this);
        const QPalette shown = palette();
        const GridLook look{state_,
                            geometry_,
                            fitter_,
                            shown,
                            [](QPainter& target, const QRectF& place) {
                                const QRectF mark(QPointF(), CurrentRowPicture()->Size());
                                CurrentRowPicture()->Paint(target, place.center() - mark.center());
                            },
                            [this](QPainter& target, bool checked, double left, double top) {
                                editors_->DrawCheck(target, checked, left, top);
                            },
                            editors_->CheckHeight(),
                            bars_->Corner()};
        const std::exception_ptr error = PaintGrid(painter, area, look);
        painted_.Paint(painter);
        if (error) std::rethrow_exception(error);
    });
}

}  // namespace quarv
