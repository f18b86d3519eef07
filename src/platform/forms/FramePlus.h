// FramePlus: a captioned panel with a thin rounded outline and a quiet title band, in the palette's
// colours. Controls placed on it count Left and Top from the panel's own corner; the band takes
// FramePlus::BandHeight of it.
#pragma once

#include <QWidget>

#include "platform/forms/Bordered.h"
#include "platform/forms/Captioned.h"
#include "platform/forms/Container.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

class FramePlus : public QWidget,
                  public Control,
                  public Captioned,
                  public Bordered,
                  public Container {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE SetBorderStyle)

  public:
    // Twips from the top that the title band covers where there is a caption.
    static constexpr double BandHeight = 240;

    // Bordered (an outline) at first; without a border no title is shown either.
    FramePlus(QWidget* container, const QString& name);

    bool WantsMnemonic() const override { return false; }

  protected:
    void CaptionChanged(const QString& shown) override;
    void BorderChanged() override { update(); }
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quarv::forms
