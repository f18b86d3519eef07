// ButtonPlus: a push button. Its form presses it for Enter (Default) or Escape (Cancel).
#pragma once

#include <QPushButton>

#include "platform/forms/Captioned.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

class ButtonPlus : public QPushButton, public Control, public Captioned {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(bool Default READ Default WRITE SetDefault)
    Q_PROPERTY(bool Cancel READ Cancel WRITE SetCancel)

  public:
    ButtonPlus(QWidget* container, const QString& name);

    // Enter presses the first usable default button of a form, unless the focus has a use for it.
    bool Default() const { return default_; }
    void SetDefault(bool on);
    // Escape presses the first usable cancel button of a form.
    bool Cancel() const { return cancel_; }
    void SetCancel(bool on) { cancel_ = on; }

  Q_SIGNALS:
    void Click();

  protected:
    void CaptionChanged(const QString& shown) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool default_ = false;
    bool cancel_ = false;
};

}  // namespace quarv::forms
