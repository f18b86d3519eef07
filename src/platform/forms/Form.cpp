#include "platform/forms/Form.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMoveEvent>
#include <QResizeEvent>

#include "base/RuntimeError.h"
#include "platform/forms/Application.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/KeyPress.h"
#include "platform/forms/Mnemonics.h"

namespace quarv::forms {

namespace {

constexpr double DefaultWidth = 4800;
constexpr double DefaultHeight = 3600;

Qt::WindowFlags FlagsOf(int border) {
    switch (border) {
        case Form::NoBorder:
            return Qt::Window | Qt::FramelessWindowHint;
        case Form::FixedDialog:
            return Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
        default:
            return Qt::Window;
    }
}

// The button that a key presses: the first usable one that `marked` holds for.
ButtonPlus* FindButton(const ControlList& controls, bool (ButtonPlus::*marked)() const) {
    for (Control* control : controls) {
        auto* button = dynamic_cast<ButtonPlus*>(control);
        if (button && (button->*marked)() && button->isEnabled() && button->isVisible())
            return button;
    }
    return nullptr;
}

}  // namespace

Form::Form(const QString& name, QWidget* owner)
    : QWidget(owner, FlagsOf(Sizable)), Control(this, nullptr, name) {
    NoteVisible(false);
    Move(0, 0, DefaultWidth, DefaultHeight);
}

Form::~Form() = default;

void Form::SetCaption(const QString& caption) {
    setWindowTitle(caption);
    DeriveSpokenName(caption);
}

void Form::SetBorderStyle(int border) {
    if (border < NoBorder || border > FixedDialog)
        throw RuntimeError(RuntimeError::InvalidPropertyValue);
    border_ = border;
    const bool visible = isVisible();
    setWindowFlags(FlagsOf(border));
    ApplySize(size());
    if (visible) QWidget::setVisible(true);
}

void Form::ApplySize(const QSize& pixels) {
    if (border_ == Sizable) {
        setMinimumSize(0, 0);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        resize(pixels);
    } else {
        setFixedSize(pixels);
    }
}

void Form::ApplyGeometry(const QRect& pixels, bool moved, bool resized) {
    if (resized) ApplySize(pixels.size());
    // Only a form that was placed keeps its place; any other is the window manager's to place.
    if (moved) move(pixels.topLeft());
}

void Form::ApplyVisible(bool visible) {
    setVisible(visible);
}

void Form::Load() {
    if (loaded_) return;
    loaded_ = true;
    Application::RunEvent([this] { Form_Load(); });
}

void Form::setVisible(bool visible) {
    if (visible) {
        Load();
        if (!shownOnce_) {
            shownOnce_ = true;
            AssignMnemonics(Controls());
            SizeChanged();
        }
    }
    NoteVisible(visible);
    QWidget::setVisible(visible);
}

void Form::Show() {
    setVisible(true);
    raise();
    activateWindow();
}

void Form::Close() {
    close();
}

void Form::SizeChanged() {
    // Before the first showing there is nothing laid out to follow; that showing raises it.
    if (!shownOnce_) return;
    Application::RunEvent([this] { Form_Resize(); });
    Application::RunEvent([this] { Q_EMIT Resize(); });
}

void Form::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    AdoptSize(event->size());
}

void Form::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    AdoptPosition(pos());
}

void Form::closeEvent(QCloseEvent* event) {
    event->accept();
    NoteVisible(false);
    Application::RunEvent([this] { Q_EMIT Closed(); });
}

bool Form::TakesKeyUp(const QKeyEvent& event) {
    if (!keyPreview_ || event.isAutoRepeat()) return false;
    int keyCode = event.key();
    Application::RunEvent([&] { Q_EMIT KeyUp(keyCode, ShiftOf(event)); });
    // A key without a code, as an input method sends, cannot be swallowed.
    return keyCode == 0 && event.key() != 0;
}

void Form::keyPressEvent(QKeyEvent* event) {
    ButtonPlus* button = nullptr;
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::NoModifier) {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            button = FindButton(Controls(), &ButtonPlus::Default);
        else if (event->key() == Qt::Key_Escape)
            button = FindButton(Controls(), &ButtonPlus::Cancel);
    }
    if (button == nullptr) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    button->click();
}

}  // namespace quarv::forms
