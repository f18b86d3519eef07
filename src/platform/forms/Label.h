// Label: literal text, never markup, that wraps where its width asks for it. It names its buddy,
// the box beside it, for the keyboard and for assistive tools.
#pragma once

#include <QLabel>

#include "platform/forms/Captioned.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

class Label : public QLabel, public Control, public Captioned {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(int Alignment READ Alignment WRITE SetAlignment)

  public:
    Label(QWidget* container, const QString& name);

    // 0 left, 1 right, 2 centred; any other value raises InvalidPropertyValue.
    int Alignment() const { return alignment_; }
    void SetAlignment(int alignment);
    // On at first. Off, one line is shown, centred vertically.
    void SetWordWrap(bool wrap);

    // The box that this label names; it must live as long as the label. The box's spoken name
    // becomes the caption without its colon, unless it was given one.
    void SetBuddy(Control& box);
    bool WantsMnemonic() const override { return buddy() != nullptr; }

  protected:
    void CaptionChanged(const QString& shown) override;

  private:
    void ApplyAlignment();

    Control* named_ = nullptr;
    int alignment_ = 0;
};

}  // namespace quarv::forms
