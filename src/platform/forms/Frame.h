// Frame: a group box, a titled border around controls that are placed on it (their Left and Top
// count from the frame's own corner).
#pragma once

#include <QGroupBox>

#include "platform/forms/Bordered.h"
#include "platform/forms/Captioned.h"
#include "platform/forms/Container.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

class Frame : public QGroupBox,
              public Control,
              public Captioned,
              public Bordered,
              public Container {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE SetBorderStyle)

  public:
    // Bordered at first; without a border no title is shown either.
    Frame(QWidget* container, const QString& name);

    bool WantsMnemonic() const override { return false; }

  protected:
    void CaptionChanged(const QString& shown) override;
    void BorderChanged() override { update(); }
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quarv::forms
