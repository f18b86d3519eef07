// RCheckbox: a check box that draws itself from small pictures, and draws its image onto other
// surfaces for a grid. Its container owns it; what a check means is its host's affair.
#pragma once

#include "base/Object.h"
#include "controls/CheckPainter.h"
#include "controls/CheckState.h"
#include "controls/StoredProperties.h"
#include "platform/drawing/PaintedPictures.h"
#include "platform/forms/UserControl.h"

namespace quarv {

class RCheckbox : public forms::UserControl {
    Q_OBJECT
    Q_PROPERTY(bool Checked READ Checked WRITE SetChecked)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(quint32 BackColor READ BackColor WRITE SetBackColor)
    // The hosting form keeps the tool tip; by name it can only be read here.
    Q_PROPERTY(QString ToolTipText READ ToolTipText)

  public:
    RCheckbox(QWidget* container, const QString& name);

    // Each writer announces its property by name and redraws.

    // Announced as the property "Checked", by the user's doing too, and never stored: a form starts
    // with its check boxes unchecked.
    bool Checked() const { return state_.isChecked; }
    void SetChecked(bool checked);
    // Literal text right of the box. It is the spoken name too.
    const QString& Caption() const { return caption_; }
    void SetCaption(const QString& caption);
    // The stored form of the background's colour.
    quint32 BackColor() const { return backColor_; }
    void SetBackColor(quint32 stored);
    void SetEnabled(bool enabled) override;

    // Checks or unchecks, unless the control is disabled or being designed.
    void Toggle();

    // Clears the control, of painted pictures too, and draws it.
    Q_INVOKABLE void Redraw();
    // Paints a picture onto the control, until the next Redraw. Lengths are twips; what each
    // argument is and what is raised: drawing::PaintPictureArguments and PaintedPictures::Add.
    // Raises TypeMismatch where `picture` is another object.
    Q_INVOKABLE void PaintPicture(const quarv::ObjectRef& picture, float X1, float Y1,
                                  const quarv::Value& Width1 = {}, const quarv::Value& Height1 = {},
                                  const quarv::Value& X2 = {}, const quarv::Value& Y2 = {},
                                  const quarv::Value& Width2 = {}, const quarv::Value& Height2 = {},
                                  const quarv::Value& Opcode = {});
    // Draws the control's image, its caption included, onto `target` with its corner at (X, Y) in
    // twips of that surface, without clearing. The two numbers mean nothing; pass 0.
    void DrawEx(bool pressed, bool checked, int, int, double X, double Y, QPainter& target) const;

    // Raises Overflow for a stored colour beyond 32 bits.
    void ReadProperties(const forms::PropertyBag& bag) override;
    void WriteProperties(forms::PropertyBag& bag) const override;

  protected:
    void UserControl_Resize() override { Redraw(); }
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Announce(const QString& property);
    void PaintFocusMark(QPainter& painter) const;

    CheckState state_;
    CheckMetrics metrics_;
    QString caption_;
    quint32 backColor_ = DefaultBackColor;
    drawing::PaintedPictures painted_;
};

}  // namespace quarv
