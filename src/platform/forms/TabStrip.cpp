#include "platform/forms/TabStrip.h"

#include <QEvent>
#include <QSignalBlocker>
#include <QStyleOptionTabWidgetFrame>
#include <QStylePainter>
#include <QTabBar>
#include <algorithm>

#include "base/RuntimeError.h"
#include "platform/forms/Application.h"
#include "platform/forms/Mnemonics.h"
#include "platform/forms/Twips.h"

namespace quarv::forms {

namespace {

constexpr int PageMargin = 4;  // pixels between the page's edge and its client area

}  // namespace

Tab& Tabs::Add(const QString& caption) {
    tabs_.push_back(std::unique_ptr<Tab>(new Tab(caption, Count() + 1)));
    const QSignalBlocker quiet(bar_);
    bar_.addTab(WithMnemonic(caption, -1));
    return *tabs_.back();
}

Tab& Tabs::Item(int index) const {
    if (index < 1 || index > Count()) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return *tabs_[static_cast<size_t>(index - 1)];
}

void Tabs::Clear() {
    const QSignalBlocker quiet(bar_);
    while (bar_.count() > 0) bar_.removeTab(bar_.count() - 1);
    tabs_.clear();
}

TabStrip::TabStrip(QWidget* container, const QString& name)
    : QWidget(container), Control(this, container, name), bar_(new QTabBar(this)), tabs_(*bar_) {
    bar_->setDrawBase(false);
    bar_->setExpanding(false);
    bar_->setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(bar_);
    lower();
    RefreshSpokenName();
    connect(bar_, &QTabBar::currentChanged, this,
            [this] { Application::RunEvent([this] { Q_EMIT Click(); }); });
}

QWidget* TabStrip::InnerWidget() const {
    return bar_;
}

Tab* TabStrip::SelectedItem() const {
    const int position = bar_->currentIndex();
    return position < 0 ? nullptr : &tabs_.Item(position + 1);
}

void TabStrip::SetSelectedItem(const Tab& tab) {
    if (&tabs_.Item(tab.Index()) != &tab) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    bar_->setCurrentIndex(tab.Index() - 1);
}

int TabStrip::BarHeight() const {
    return bar_->sizeHint().height();
}

double TabStrip::ClientLeft() const {
    return Left() + ToTwips(PageMargin);
}

double TabStrip::ClientTop() const {
    return Top() + ToTwips(BarHeight() + PageMargin);
}

double TabStrip::ClientWidth() const {
    return std::max(0.0, Width() - ToTwips(2 * PageMargin));
}

double TabStrip::ClientHeight() const {
    return std::max(0.0, Height() - ToTwips(BarHeight() + 2 * PageMargin));
}

void TabStrip::LayOutBar() {
    bar_->setGeometry(0, 0, width(), BarHeight());
}

void TabStrip::resizeEvent(QResizeEvent*) {
    LayOutBar();
}

void TabStrip::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) LayOutBar();
}

void TabStrip::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionTabWidgetFrame page;
    page.initFrom(this);
    const int overlap = style()->pixelMetric(QStyle::PM_TabBarBaseOverlap, nullptr, this);
    page.rect = rect().adjusted(0, BarHeight() - overlap, 0, 0);
    page.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
    page.shape = QTabBar::RoundedNorth;
    page.tabBarSize = bar_->size();
    page.tabBarRect = bar_->geometry();
    if (bar_->currentIndex() >= 0) page.selectedTabRect = bar_->tabRect(bar_->currentIndex());
    painter.drawPrimitive(QStyle::PE_FrameTabWidget, page);
}

}  // namespace quarv::forms
