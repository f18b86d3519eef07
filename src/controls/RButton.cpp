#include "controls/RButton.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include "controls/ButtonPainter.h"
#include "controls/RButtonAccess.h"
#include "controls/StoredProperties.h"
#include "platform/forms/Application.h"
#include "platform/forms/PictureBox.h"
#include "platform/forms/Twips.h"

namespace quarv {

using forms::Application;

namespace {

// Enter and Space alone, of the number pad too.
bool IsPlain(const QKeyEvent& event) {
    return (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

bool IsEnter(const QKeyEvent& event) {
    return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) && IsPlain(event);
}

bool IsSpace(const QKeyEvent& event) {
    return event.key() == Qt::Key_Space && IsPlain(event);
}

}  // namespace

RButton::RButton(QWidget* container, const QString& name) : forms::UserControl(container, name) {
    RButtonAccess::Install();
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void RButton::Announce(const QString& property) {
    update();
    Application::RunEvent([&] { Q_EMIT PropertyChanged(property); });
}

void RButton::SetPicture(const drawing::PictureRef& picture) {
    picture_ = picture;
    Announce(QStringLiteral("Picture"));
}

void RButton::SetPictureDown(const drawing::PictureRef& picture) {
    pictureDown_ = picture;
    Announce(QStringLiteral("PictureDown"));
}

void RButton::SetPictureObject(const ObjectRef& picture) {
    SetPicture(drawing::PictureIn(Value(picture)));
}

void RButton::SetPictureDownObject(const ObjectRef& picture) {
    SetPictureDown(drawing::PictureIn(Value(picture)));
}

void RButton::SetDown(bool down) {
    const bool changed = down != down_;
    down_ = down;
    Announce(QStringLiteral("Down"));
    if (changed) RButtonAccess::NotePressed(*this);
}

void RButton::SetDotNet(bool flat) {
    flat_ = flat;
    Announce(QStringLiteral("DotNet"));
}

void RButton::SetBackColor(quint32 stored) {
    backColor_ = stored;
    Announce(QStringLiteral("BackColor"));
}

void RButton::SetEnabled(bool enabled) {
    forms::UserControl::SetEnabled(enabled);
    Announce(QStringLiteral("Enabled"));
}

void RButton::ReadProperties(const forms::PropertyBag& bag) {
    picture_ = drawing::PictureIn(bag.ReadProperty(QStringLiteral("Picture")));
    down_ = bag.ReadProperty(QStringLiteral("Down"), Value(false)).ToBoolean();
    flat_ = bag.ReadProperty(QStringLiteral("DotNet"), Value(false)).ToBoolean();
    pictureDown_ = drawing::PictureIn(bag.ReadProperty(QStringLiteral("PictureDown")));
    backColor_ = ReadBackColor(bag);
    forms::UserControl::SetEnabled(
        bag.ReadProperty(QStringLiteral("Enabled"), Value(true)).ToBoolean());
    update();
}

void RButton::WriteProperties(forms::PropertyBag& bag) const {
    const Value none{ObjectRef()};
    bag.WriteProperty(QStringLiteral("Picture"), Value(PictureObject()), none);
    bag.WriteProperty(QStringLiteral("Down"), Value(down_), Value(false));
    bag.WriteProperty(QStringLiteral("DotNet"), Value(flat_), Value(false));
    bag.WriteProperty(QStringLiteral("Enabled"), Value(Enabled()), Value(true));
    bag.WriteProperty(QStringLiteral("PictureDown"), Value(PictureDownObject()), none);
    WriteBackColor(bag, backColor_);
}

void RButton::ShowCol(forms::PictureBox& box) const {
    constexpr QRect Block(QPoint(2, 2), QPoint(10, 9));
    const QImage seen = box.grab(Block & box.rect()).toImage();
    for (int y = 0; y < seen.height(); ++y)
        for (int x = 0; x < seen.width(); ++x) static_cast<void>(seen.pixelColor(x, y));
}

bool RButton::IsInside(const QPointF& onScreen) const {
    using forms::TwipsPerPixel;
    return HitsButton(mapFromGlobal(onScreen),
                      QSizeF(Width() / TwipsPerPixel, Height() / TwipsPerPixel));
}

void RButton::RaiseClick() {
    Application::RunEvent([this] { Q_EMIT Click(); });
}

void RButton::Press() {
    if (isEnabled() && UserMode()) RaiseClick();
}

void RButton::Apply(unsigned effects) {
    if (effects & ButtonState::Repaint) update();
    if (effects & ButtonState::RaiseClick) RaiseClick();
}

void RButton::mouseMoveEvent(QMouseEvent*) {
    if (UserMode()) Apply(state_.Move());
}

// Qt reports every leaving by itself, so there is nothing to ask for again after a click.
void RButton::leaveEvent(QEvent*) {
    if (UserMode()) Apply(state_.Leave());
}

void RButton::mousePressEvent(QMouseEvent* event) {
    if (UserMode() && event->button() == Qt::LeftButton) Apply(state_.Press());
}

void RButton::mouseReleaseEvent(QMouseEvent* event) {
    if (!UserMode() || event->button() != Qt::LeftButton) return;
    const QPointF cursor = event->globalPosition();
    FinishClick(state_.Release(IsInside(cursor)), cursor);
}

void RButton::FinishClick(unsigned effects, const QPointF& cursor) {
    const QPointer<RButton> alive(this);
    const QWidget* active = QApplication::focusWidget();
    const QPointF before = QCursor::pos();
    Apply(effects);
    if (alive == nullptr) return;
    // A handler may take as long as the user likes, who may move the mouse meanwhile.
    const QPointF after = cursor + (QCursor::pos() - before);
    Apply(ButtonState::AfterRelease(IsInside(after), QApplication::focusWidget() != active));
}

void RButton::keyPressEvent(QKeyEvent* event) {
    if (!UserMode() || (!IsEnter(*event) && !IsSpace(*event))) {
        forms::UserControl::keyPressEvent(event);
        return;
    }
    if (event->isAutoRepeat()) return;
    if (IsSpace(*event))
        Apply(state_.Hold());
    else
        Press();
}

void RButton::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space || !UserMode())
        forms::UserControl::keyReleaseEvent(event);
    else if (!event->isAutoRepeat())
        Apply(state_.LetGo());
}

void RButton::focusInEvent(QFocusEvent*) {
    update();
}

void RButton::focusOutEvent(QFocusEvent*) {
    state_.CancelHold();
    update();
}

bool RButton::event(QEvent* event) {
    // While disabled or hidden it gets no word of the mouse.
    const bool away =
        event->type() == QEvent::Hide || (event->type() == QEvent::EnabledChange && !isEnabled());
    if (away) Apply(state_.Reset());
    return forms::UserControl::event(event);
}

void RButton::paintEvent(QPaintEvent*) {
    Application::RunEvent([this] {
        QPainter painter(this);
        // What the button does not draw shows the control's own colour.
        painter.fillRect(rect(), drawing::TranslateColor(backColor_, palette()));
        PaintButton(painter, rect(),
                    {.picture = picture_,
                     .pictureDown = pictureDown_,
                     .backColor = backColor_,
                     .palette = palette(),
                     .down = down_,
                     .flat = flat_,
                     .enabled = isEnabled(),
                     .hovered = state_.Hovered() || !UserMode(),
                     .pressed = state_.Pressed(),
                     .focused = hasFocus()});
    });
}

}  // namespace quarv
