#include "controls/RaisedPanel.h"

#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QPainter>
#include <iterator>
#include <utility>

#include "base/NumberText.h"
#include "base/RObjectList.h"
#include "controls/StoredProperties.h"
#include "platform/forms/Application.h"
#include "platform/forms/Twips.h"

namespace quarv {

using forms::Application;
using forms::TwipsPerPixel;

namespace {

constexpr qint32 AllEdges = drawing::BF_RECT;
constexpr qint32 Raised = 0;

// By style.
constexpr unsigned EdgeKinds[] = {drawing::EDGE_RAISED, drawing::EDGE_SUNKEN, drawing::EDGE_ETCHED,
                                  drawing::EDGE_BUMP};

unsigned EdgeKindOf(qint32 style) {
    constexpr auto Styles = static_cast<qint32>(std::size(EdgeKinds));
    return style >= 0 && style < Styles ? EdgeKinds[style] : 0;
}

QAccessibleInterface* PaneFor(const QString&, QObject* object) {
    auto* panel = qobject_cast<RaisedPanel*>(object);
    return panel == nullptr ? nullptr : new QAccessibleWidget(panel, QAccessible::Pane);
}

// By position: what is done to a control may place another one on its container.
template <typename Action>
void ForEachOn(const forms::Container& container, Action action) {
    for (size_t i = 0; i < container.ContainedControls().size(); ++i)
        action(*container.ContainedControls()[i]);
}

}  // namespace

RaisedPanel::RaisedPanel(QWidget* container, const QString& name)
    : forms::UserControl(container, name) {
    SetControlContainer(true);
    QAccessible::installFactory(PaneFor);
}

void RaisedPanel::Announce(const QString& property) {
    update();
    Application::RunEvent([&] { Q_EMIT PropertyChanged(property); });
}

void RaisedPanel::SetEdges(qint32 edges) {
    edges_ = edges;
    Announce(QStringLiteral("Edges"));
}

void RaisedPanel::SetStyle(qint32 style) {
    style_ = style;
    Announce(QStringLiteral("Style"));
}

bool RaisedPanel::HasEdge(drawing::EdgeSides side) const {
    return (edges_ & static_cast<qint32>(side)) != 0;
}

void RaisedPanel::SetEdge(drawing::EdgeSides side, bool on) {
    const auto flag = static_cast<qint32>(side);
    SetEdges(on ? edges_ | flag : edges_ & ~flag);
}

double RaisedPanel::ScaleWidth() const {
    return static_cast<double>(RoundToInteger(Width() / TwipsPerPixel));
}

double RaisedPanel::ScaleHeight() const {
    return Height() / TwipsPerPixel;
}

void RaisedPanel::Refresh() {
    repaint();
}

void RaisedPanel::CentreContainedVertically() {
    // The height in twips is the one in pixels that was not rounded.
    const double height = Height();
    ForEachOn(*this, [&](Control& control) { control.SetTop((height - control.Height()) / 2); });
}

void RaisedPanel::CentreContainedHorizontally() {
    // From the rounded width, unlike the height: kept so.
    const double width = forms::ToTwips(ScaleWidth());
    ForEachOn(*this, [&](Control& control) { control.SetLeft((width - control.Width()) / 2); });
}

void RaisedPanel::SetContainedEnabled(bool b) {
    ForEachOn(*this, [&](Control& control) { control.SetEnabled(b); });
}

ObjectRef RaisedPanel::ContainedList() const {
    auto list = std::make_shared<RObjectList>();
    ForEachOn(*this, [&](Control& control) { list->Add(Borrow(&control)); });
    return list;
}

void RaisedPanel::ReadProperties(const forms::PropertyBag& bag) {
    const qint32 edges = ReadInteger(bag, QStringLiteral("Edges"), AllEdges);
    style_ = ReadInteger(bag, QStringLiteral("Style"), Raised);
    edges_ = edges;
    update();
}

void RaisedPanel::WriteProperties(forms::PropertyBag& bag) const {
    bag.WriteProperty(QStringLiteral("Edges"), Value(edges_), Value(AllEdges));
    bag.WriteProperty(QStringLiteral("Style"), Value(style_), Value(Raised));
}

bool RaisedPanel::IsOwn(const QMouseEvent& event) const {
    // What a control does not want arrives here too: a click on a label, or on a disabled control.
    const QPoint position = event.position().toPoint();
    return event.button() == Qt::LeftButton && UserMode() && rect().contains(position) &&
           childAt(position) == nullptr;
}

void RaisedPanel::mousePressEvent(QMouseEvent* event) {
    const bool own = IsOwn(*event);
    if (event->button() == Qt::LeftButton) pressed_ = own;
    if (!own) forms::UserControl::mousePressEvent(event);
}

void RaisedPanel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !std::exchange(pressed_, false)) {
        forms::UserControl::mouseReleaseEvent(event);
        return;
    }
    if (IsOwn(*event)) Application::RunEvent([this] { Q_EMIT Click(); });
}

bool RaisedPanel::event(QEvent* event) {
    // While disabled or hidden it gets no word of the mouse.
    if (event->type() == QEvent::Hide || event->type() == QEvent::EnabledChange) pressed_ = false;
    return forms::UserControl::event(event);
}

void RaisedPanel::paintEvent(QPaintEvent*) {
    Application::RunEvent([this] {
        QPainter painter(this);
        const auto sides = static_cast<unsigned>(edges_ & AllEdges);
        drawing::DrawEdge(painter, rect(), EdgeKindOf(style_), sides, palette());
    });
}

}  // namespace quarv
