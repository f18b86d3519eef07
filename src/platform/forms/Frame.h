// Frame: a group box, a titled border around controls that are placed on it (their Left and Top
// count from the frame's own corner).
#pragma once

#include <QGroupBox>

#include "platform/forms/Captioned.h"
#include "platform/forms/Container.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

class Frame : public QGroupBox, public Control, public Captioned, public Container {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE SetBorderStyle)

  public:
    Frame(QWidget* container, const QString& name);

    // 0 shows neither border nor title; 1, the default, shows both. Any other value raises
    // InvalidPropertyValue.
    int BorderStyle() const { return border_; }
    void SetBorderStyle(int border);
    bool WantsMnemonic() const override { return false; }

  protected:
    void CaptionChanged(const QString& shown) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    int border_ = 1;
};

}  // namespace quarv::forms
