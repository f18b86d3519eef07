// ButtonState: what an owner-drawn push button knows of mouse and keyboard, without a widget: it
// takes their events and answers what is to be done now. Its button owns it, and tells it nothing
// while the button is disabled or being designed.
#pragma once

#include <QPointF>
#include <QSizeF>

namespace quarv {

class ButtonState {
  public:
    // Effects, combined by "or". The button repaints before it raises the click.
    enum Effect : unsigned { Nothing = 0, Repaint = 1, RaiseClick = 2 };

    // The mouse is over the button, or the keyboard stands in for it.
    bool Hovered() const { return hover_ || held_; }
    // The left mouse button, or the space bar, went down and has not come up.
    bool Pressed() const { return pressed_ || held_; }

    unsigned Move();
    unsigned Leave();
    // Of the left mouse button; the others mean nothing to a button.
    unsigned Press();
    unsigned Release(bool inside);
    // Once the click's handler has run. `focusMoved`: it gave the focus to another control.
    static unsigned AfterRelease(bool inside, bool focusMoved);

    // Space holds the button down as the mouse does, and clicks when it comes up.
    unsigned Hold();
    unsigned LetGo();
    unsigned CancelHold();

    // Mouse and keyboard are elsewhere now, and what they let go of there is not reported.
    unsigned Reset();

  private:
    bool hover_ = false;
    bool pressed_ = false;
    bool held_ = false;
};

// True where `position` lies inside a button of that size or on its edge, both ends included; all
// in pixels from the button's corner.
bool HitsButton(const QPointF& position, const QSizeF& size);

}  // namespace quarv
