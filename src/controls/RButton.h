// RButton: a push button that draws itself: a picture on a coloured face, with a look while the
// mouse is over it, one while it is pressed, and a latched state. Its container owns it; what a
// click means is its host's affair.
#pragma once

#include "base/Object.h"
#include "controls/ButtonState.h"
#include "platform/drawing/Picture.h"
#include "platform/drawing/SystemColors.h"
#include "platform/forms/UserControl.h"

namespace quarv {

namespace forms {
class PictureBox;
}  // namespace forms

class RButton : public forms::UserControl {
    Q_OBJECT
    Q_PROPERTY(quarv::ObjectRef Picture READ PictureObject WRITE SetPictureObject)
    Q_PROPERTY(quarv::ObjectRef PictureDown READ PictureDownObject WRITE SetPictureDownObject)
    Q_PROPERTY(bool Down READ Down WRITE SetDown)
    Q_PROPERTY(bool DotNet READ DotNet WRITE SetDotNet)
    Q_PROPERTY(quint32 BackColor READ BackColor WRITE SetBackColor)

  public:
    RButton(QWidget* container, const QString& name);

    // Each writer announces its property, under the name it is stored by, and repaints.

    // Without a picture (null or empty) the button shows nothing but its back colour.
    const drawing::PictureRef& Picture() const { return picture_; }
    void SetPicture(const drawing::PictureRef& picture);
    // Shown in place of Picture while the button is latched; null leaves Picture.
    const drawing::PictureRef& PictureDown() const { return pictureDown_; }
    void SetPictureDown(const drawing::PictureRef& picture);
    // Latched. Only the host changes it; a click does not.
    bool Down() const { return down_; }
    void SetDown(bool down);
    // The flat look: blue-grey while the mouse is over the button, with a navy outline.
    bool DotNet() const { return flat_; }
    void SetDotNet(bool flat);
    // The stored form of the face colour.
    quint32 BackColor() const { return backColor_; }
    void SetBackColor(quint32 stored);
    void SetEnabled(bool enabled) override;

    // As if clicked: raises Click, unless the button is disabled or being designed.
    void Press();
    // Pressed by mouse or keyboard just now.
    bool IsPressed() const { return state_.Pressed(); }

    // Reads the colours of a block of the box's pixels and discards them: a diagnostic without
    // effect.
    void ShowCol(forms::PictureBox& box) const;

    // Raise TypeMismatch for a stored picture that is none, Overflow for a colour beyond 32 bits.
    void ReadProperties(const forms::PropertyBag& bag) override;
    void WriteProperties(forms::PropertyBag& bag) const override;

  Q_SIGNALS:
    void Click();

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    ObjectRef PictureObject() const { return picture_; }
    void SetPictureObject(const ObjectRef& picture);
    ObjectRef PictureDownObject() const { return pictureDown_; }
    void SetPictureDownObject(const ObjectRef& picture);

    void Announce(const QString& property);
    void Apply(unsigned effects);
    void RaiseClick();
    void FinishClick(unsigned effects, const QPointF& cursor);
    bool IsInside(const QPointF& onScreen) const;

    ButtonState state_;
    drawing::PictureRef picture_;
    drawing::PictureRef pictureDown_;
    quint32 backColor_ = drawing::Stored(drawing::SystemColor::ButtonFace);
    bool down_ = false;
    bool flat_ = false;
};

}  // namespace quarv
