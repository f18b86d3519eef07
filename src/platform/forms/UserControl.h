// UserControl: a control made of controls, the base of panes and of owner-drawn controls. Its parts
// belong to it by name, not to the form around it. It can be saved to and loaded from a property
// bag, announces changed properties, and knows whether it runs or is being designed.
#pragma once

#include <QWidget>

#include "platform/forms/Control.h"
#include "platform/forms/ControlHost.h"
#include "platform/forms/PropertyBag.h"

namespace quarv::forms {

class UserControl : public QWidget, public Control, public ControlHost {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(double ScaleWidth READ ScaleWidth)
    Q_PROPERTY(double ScaleHeight READ ScaleHeight)

  public:
    UserControl(QWidget* container, const QString& name);

    // The inner size in the unit that the control draws in: twips, where it does not say otherwise.
    // There is no border.
    virtual double ScaleWidth() const { return Width(); }
    virtual double ScaleHeight() const { return Height(); }

    // False while the form around it is being designed; true without a form.
    bool UserMode() const;

    // Load from and save to `bag`, which belongs to the caller.
    virtual void ReadProperties(const PropertyBag& bag);
    virtual void WriteProperties(PropertyBag& bag) const;

  Q_SIGNALS:
    // A property of this name has another value now.
    void PropertyChanged(const QString& name);

  protected:
    // Raised after every change of the size. Make the parts before the first size is set.
    virtual void UserControl_Resize() {}

    // A control that is a place for the form's own controls (a panel) leaves their names to the
    // form. Off at first; to be called before anything is placed on it.
    void SetControlContainer(bool on) { controlContainer_ = on; }

    void SizeChanged() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    bool OwnsNames() const override { return !controlContainer_; }

    bool controlContainer_ = false;
};

}  // namespace quarv::forms
