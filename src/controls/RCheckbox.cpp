#include "controls/RCheckbox.h"

#include <QMouseEvent>
#include <QPainter>

#include "controls/RCheckboxAccess.h"
#include "controls/StockPictures.h"
#include "platform/forms/Application.h"
#include "platform/forms/KeyPress.h"
#include "platform/forms/Twips.h"

namespace quarv {

using forms::Application;

namespace {

CheckMetrics ScreenMetrics() {
    constexpr auto Twips = static_cast<qint16>(forms::TwipsPerPixel);
    return {.twipsPerPixelX = Twips, .twipsPerPixelY = Twips};
}

}  // namespace

RCheckbox::RCheckbox(QWidget* container, const QString& name)
    : forms::UserControl(container, name), metrics_(ScreenMetrics()) {
    RCheckboxAccess::Install();
    setFocusPolicy(Qt::StrongFocus);
}

void RCheckbox::Announce(const QString& property) {
    Application::RunEvent([&] { Q_EMIT PropertyChanged(property); });
    Redraw();
}

void RCheckbox::SetChecked(bool checked) {
    const bool changed = checked != state_.isChecked;
    state_.isChecked = checked;
    if (changed) RCheckboxAccess::NoteChecked(*this);
    Announce(QStringLiteral("Checked"));
}

void RCheckbox::SetCaption(const QString& caption) {
    caption_ = caption;
    DeriveSpokenName(caption);
    Announce(QStringLiteral("Caption"));
}

void RCheckbox::SetBackColor(quint32 stored) {
    backColor_ = stored;
    Announce(QStringLiteral("BackColor"));
}

void RCheckbox::SetEnabled(bool enabled) {
    forms::UserControl::SetEnabled(enabled);
    Announce(QStringLiteral("Enabled"));
}

void RCheckbox::Toggle() {
    if (isEnabled() && UserMode()) SetChecked(!Checked());
}

void RCheckbox::Redraw() {
    painted_.Clear();
    update();
}

void RCheckbox::PaintPicture(const ObjectRef& picture, float X1, float Y1, const Value& Width1,
                             const Value& Height1, const Value& X2, const Value& Y2,
                             const Value& Width2, const Value& Height2, const Value& Opcode) {
    painted_.Add({drawing::PictureIn(Value(picture)), X1, Y1, Width1, Height1, X2, Y2, Width2,
                  Height2, Opcode});
    update();
}

void RCheckbox::DrawEx(bool pressed, bool checked, int, int, double X, double Y,
                       QPainter& target) const {
    PaintCheck(target, QPointF(X, Y), metrics_,
               {.pressed = pressed, .checked = checked, .caption = caption_});
}

void RCheckbox::ReadProperties(const forms::PropertyBag& bag) {
    caption_ = bag.ReadProperty(QStringLiteral("Caption"), Value(QString())).ToText();
    DeriveSpokenName(caption_);
    backColor_ = ReadBackColor(bag);
    forms::UserControl::SetEnabled(
        bag.ReadProperty(QStringLiteral("Enabled"), Value(true)).ToBoolean());
    Redraw();
}

void RCheckbox::WriteProperties(forms::PropertyBag& bag) const {
    bag.WriteProperty(QStringLiteral("Caption"), Value(caption_), Value(QString()));
    bag.WriteProperty(QStringLiteral("Enabled"), Value(Enabled()), Value(true));
    WriteBackColor(bag, backColor_);
}

// Accepted, so that the release comes here.
void RCheckbox::mousePressEvent(QMouseEvent*) {}

void RCheckbox::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint())) return;
    Toggle();
}

void RCheckbox::keyPressEvent(QKeyEvent* event) {
    const auto next =
        forms::IsCommand(*event) ? std::nullopt : state_.AfterKey(forms::KeyAsciiOf(*event));
    if (!next.has_value() || !UserMode()) {
        forms::UserControl::keyPressEvent(event);
        return;
    }
    // A key held down is one key press; else the space bar would flicker the mark.
    if (!event->isAutoRepeat()) SetChecked(*next);
}

bool RCheckbox::event(QEvent* event) {
    const auto type = event->type();
    if (type == QEvent::FocusIn || type == QEvent::FocusOut || type == QEvent::EnabledChange)
        update();
    return forms::UserControl::event(event);
}

// A ring in the one pixel that the box leaves free around itself.
void RCheckbox::PaintFocusMark(QPainter& painter) const {
    const QSizeF box = EmptyBoxPicture()->Size();
    painter.setPen(
        QPen(palette().color(QPalette::Highlight), 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(0.5, 0.5, box.width() + 1, box.height() + 1));
}

void RCheckbox::paintEvent(QPaintEvent*) {
    Application::RunEvent([this] {
        QPainter painter(this);
        painter.fillRect(rect(), drawing::TranslateColor(backColor_, palette()));
        if (hasFocus()) PaintFocusMark(painter);
        painter.setPen(palette().color(QPalette::ButtonText));
        PaintCheck(painter, QPointF(), metrics_,
                   {.pressed = state_.isPressed,
                    .checked = state_.isChecked,
                    .enabled = isEnabled(),
                    .caption = caption_});
        painted_.Paint(painter);
    });
}

}  // namespace quarv
