#include "gallery/GalleryWindow.h"

#include "controls/PlaceInPixels.h"
#include "controls/RButton.h"
#include "controls/RCheckbox.h"
#include "controls/StockPictures.h"
#include "gallery/LookBoard.h"
#include "gallery/PanelRow.h"
#include "grid/HBigScroller.h"
#include "grid/KelEditGrid.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/Label.h"

namespace quarv::gallery {

namespace {

// Pixels.
constexpr int Edge = 16;
constexpr int GridLeft = 380;
constexpr int GridWidth = 660;

void MakeLabel(QWidget* container, const QString& name, int left, int top, const QString& text) {
    auto* label = new forms::Label(container, name);
    PlaceInPixels(*label, left, top, 340, 18);
    label->SetCaption(text);
}

}  // namespace

GalleryWindow::GalleryWindow(bool withLongList) : forms::Form(QStringLiteral("GalleryWindow")) {
    SetCaption(QStringLiteral("Quarv gallery"));
    PlaceInPixels(*this, 0, 0, GridLeft + GridWidth + Edge, 758);
    MakeLooks();
    MakeButtons();
    MakeSmallGrid();
    MakeLongGrid(withLongList);
    MakePanels();
}

QString GalleryWindow::Rows() const {
    return TextOf(*rows_, *columns_) + ChangedLongRows(*longGrid_->RowList());
}

void GalleryWindow::MakeLooks() {
    MakeLabel(this, QStringLiteral("LooksCaption"), Edge, 12,
              QStringLiteral("At rest, hovered, pressed, latched, disabled"));
    auto* board = new LookBoard(this, QStringLiteral("Looks"));
    PlaceInPixels(*board, Edge, 40, 340, 200);
}

RButton* GalleryWindow::MakeButton(const QString& name, double left, double top) {
    auto* button = new RButton(this, name);
    button->Move(left, top, 540, 540);
    button->SetPicture(EllipsisPicture());
    return button;
}

void GalleryWindow::MakeButtons() {
    MakeLabel(this, QStringLiteral("ButtonsCaption"), Edge, 264,
              QStringLiteral("To try: buttons, check boxes, scrollers"));
    MakeButton(QStringLiteral("Classic"), 240, 4380);
    MakeButton(QStringLiteral("Flat"), 960, 4380)->SetDotNet(true);
    RButton* latch = MakeButton(QStringLiteral("Latch"), 1680, 4380);
    connect(latch, &RButton::Click, latch, [latch] { latch->SetDown(!latch->Down()); });
    MakeButton(QStringLiteral("Dead"), 2400, 4380)->SetEnabled(false);

    const QString captions[] = {QStringLiteral("Ready"), QStringLiteral("Checked"),
                                QStringLiteral("Disabled")};
    int top = 348;
    for (const QString& caption : captions) {
        auto* check = new RCheckbox(this, caption + QStringLiteral("Box"));
        PlaceInPixels(*check, Edge, top, 160, 20);
        check->SetCaption(caption);
        check->SetChecked(caption == captions[1]);
        check->SetEnabled(caption != captions[2]);
        top += 26;
    }

    MakeLabel(this, QStringLiteral("DirectCaption"), Edge, 440, QStringLiteral("0 to 100"));
    auto* direct = new HBigScroller(this, QStringLiteral("Direct"));
    PlaceInPixels(*direct, Edge, 460, 320, 17);
    direct->SetLargeChange(10);
    MakeLabel(this, QStringLiteral("ScaledCaption"), Edge, 490, QStringLiteral("0 to 3,000,000"));
    auto* scaled = new HBigScroller(this, QStringLiteral("Scaled"));
    PlaceInPixels(*scaled, Edge, 510, 320, 17);
    scaled->SetRange(0, 3'000'000);
    scaled->SetLargeChange(1000);
}

void GalleryWindow::MakeSmallGrid() {
    grid_ = new KelEditGrid(this, QStringLiteral("Grid"));
    grid_->SetSpokenName(QStringLiteral("All kinds of columns"));
    PlaceInPixels(*grid_, GridLeft, 12, GridWidth, 330);
    grid_->SetColList(columns_);
    grid_->SetRowList(rows_);
    connect(grid_, &KelEditGrid::AddRow, this,
            [](RowRef& row) { row = std::make_shared<GalleryRow>(); });
    connect(grid_, &KelEditGrid::CustomColumnElipsis, this, [](RowRef& row, ColumnRef& column) {
        row->SetColumnValue(column->Index, Value(u"filled in by the host"));
    });
    auto* remove = new forms::ButtonPlus(this, QStringLiteral("DeleteRow"));
    remove->SetCaption(QStringLiteral("Delete row"));
    PlaceInPixels(*remove, Edge, 560, 110, 28);
    connect(remove, &forms::ButtonPlus::Click, this, &GalleryWindow::DeleteCurrentRow);
    auto* add = new forms::ButtonPlus(this, QStringLiteral("AddRow"));
    add->SetCaption(QStringLiteral("Add row"));
    PlaceInPixels(*add, Edge + 120, 560, 110, 28);
    connect(add, &forms::ButtonPlus::Click, this, [this] {
        bool helper = false;
        grid_->AddRowMode(helper);
    });
}

void GalleryWindow::DeleteCurrentRow() {
    grid_->CommitAnyChanges();
    grid_->DeleteCurrentRow();
}

void GalleryWindow::MakeLongGrid(bool filled) {
    longGrid_ = new KelEditGrid(this, QStringLiteral("LongGrid"));
    longGrid_->SetSpokenName(QStringLiteral("The longest list"));
    PlaceInPixels(*longGrid_, GridLeft, 354, GridWidth, 290);
    longGrid_->SetColList(LongColumns());
    if (filled) longGrid_->SetRowList(LongRows());
}

void GalleryWindow::MakePanels() {
    MakeLabel(this, QStringLiteral("PanelsCaption"), Edge, 658,
              QStringLiteral("Panels by style and edges; a click gives the next style"));
    auto* panels = new PanelRow(this, QStringLiteral("Panels"));
    PlaceInPixels(*panels, Edge, 686, GridLeft + GridWidth - Edge, 56);
}

}  // namespace quarv::gallery
