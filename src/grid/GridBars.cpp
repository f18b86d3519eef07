#include "grid/GridBars.h"

#include <QSignalBlocker>
#include <algorithm>

#include "grid/HBigScroller.h"
#include "platform/forms/Application.h"
#include "platform/forms/ScrollBar.h"

namespace quarv {

namespace {

// Twips that an arrow of the horizontal scroller moves.
constexpr qint16 SmallStep = 300;

}  // namespace

GridBars::GridBars(QWidget* grid, std::function<void()> repaint)
    : QObject(grid),
      grid_(*grid),
      repaint_(std::move(repaint)),
      vertical_(new forms::ScrollBar(grid, QStringLiteral("VScr"), Qt::Vertical)),
      horizontal_(new HBigScroller(grid, QStringLiteral("HScr"))) {
    vertical_->SetMin(1);
    // Tab goes past the bars; the keys that scroll belong to the cells.
    vertical_->setFocusPolicy(Qt::ClickFocus);
    horizontal_->focusProxy()->setFocusPolicy(Qt::ClickFocus);
    horizontal_->SetSmallChange(SmallStep);
    vertical_->SetVisible(false);
    horizontal_->SetVisible(false);
    connect(vertical_, &forms::ScrollBar::Change, this, &GridBars::TellVertical);
    connect(vertical_, &forms::ScrollBar::Scroll, this, &GridBars::TellVertical);
    connect(horizontal_, &HBigScroller::Change, this,
            [this] { Q_EMIT HorizontalMoved(horizontal_->Value()); });
}

void GridBars::TellVertical() {
    Q_EMIT VerticalMoved(vertical_->Value());
}

double GridBars::Thickness() const {
    return vertical_->Extent();
}

void GridBars::Place(const GridGeometry& geometry) {
    const auto place = [](forms::Control& bar, const QRectF& where) {
        bar.Move(where.left(), where.top(), where.width(), where.height());
    };
    place(*vertical_, geometry.VerticalBar());
    place(*horizontal_, geometry.HorizontalBar());
}

QRect GridBars::Uncovered() const {
    QRect rest = grid_.rect();
    if (vertical_->Visible()) rest.setRight(vertical_->geometry().left() - 1);
    if (horizontal_->Visible()) rest.setBottom(horizontal_->geometry().top() - 1);
    return rest;
}

QRect GridBars::Corner() const {
    if (!horizontal_->Visible()) return {};
    const QRect bar = horizontal_->geometry();
    return {QPoint(bar.right() + 1, bar.top()), grid_.rect().bottomRight()};
}

bool GridBars::HasFocus() const {
    return vertical_->hasFocus();
}

void GridBars::ShowVertical(qint16 max, qint16 page) {
    const QSignalBlocker quiet(vertical_);
    vertical_->SetMax(max);
    vertical_->SetLargeChange(page);
    vertical_->SetVisible(true);
}

void GridBars::HideVertical() {
    const QSignalBlocker quiet(vertical_);
    vertical_->SetVisible(false);
}

void GridBars::SetVerticalValue(qint16 value) {
    const QSignalBlocker quiet(vertical_);
    vertical_->SetValue(std::clamp(value, vertical_->Min(), vertical_->Max()));
}

void GridBars::SetVerticalToMin() {
    SetVerticalValue(vertical_->Min());
}

void GridBars::ShowHorizontal(qint32 max, qint16 page) {
    horizontal_->SetRange(0, max);
    horizontal_->SetLargeChange(page);
    horizontal_->SetValue(0);
    horizontal_->SetVisible(true);
}

void GridBars::HideHorizontal() {
    horizontal_->SetVisible(false);
}

qint32 GridBars::SetHorizontalValue(qint32 value) {
    if (!horizontal_->Visible()) return 0;
    horizontal_->SetValue(std::clamp(value, horizontal_->Min(), horizontal_->Max()));
    return horizontal_->Value();
}

}  // namespace quarv
