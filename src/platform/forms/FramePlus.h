// FramePlus: a captioned panel with a thin rounded outline and a quiet title band, in the palette's
// colours. Controls placed on it count Left and Top from the panel's own corner; the band takes
// FramePlus::BandHeight of it.
#pragma once

#include <QWidget>

#include "platform/forms/Captioned.h"
#include "platform/forms/Container.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

class FramePlus : public QWidget, public Control, public Captioned, public Container {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE SetBorderStyle)

  public:
    // Twips from the top that the title band covers where there is a caption.
    static constexpr double BandHeight = 300;

    FramePlus(QWidget* container, const QString& name);

    // 0 shows neither outline nor title; 1, the default, shows both. Any other value raises
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
