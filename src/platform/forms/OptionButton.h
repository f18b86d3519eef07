// OptionButton: one choice among those of its container. Choosing one unchooses the others; a
// caller may unchoose all, the user may not.
#pragma once

#include <QRadioButton>

#include "platform/forms/Captioned.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

class OptionButton : public QRadioButton, public Control, public Captioned {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(bool Value READ Value WRITE SetValue)

  public:
    OptionButton(QWidget* container, const QString& name);

    bool Value() const { return isChecked(); }
    // Raises Click where false becomes true, as choosing by hand does.
    void SetValue(bool chosen);

  Q_SIGNALS:
    void Click();

  protected:
    void CaptionChanged(const QString& shown) override;
    void nextCheckState() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void UnchooseOthers();
    // The neighbour `step` places on among the usable choices of the container, round the end.
    OptionButton* Neighbour(int step) const;
    void RaiseClick();
};

}  // namespace quarv::forms
