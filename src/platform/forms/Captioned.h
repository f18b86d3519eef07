// Captioned: the literal caption of a control and the letter of it that is underlined. A mixin
// beside Control; the concrete control shows what CaptionChanged hands it.
#pragma once

#include <QString>

namespace quarv::forms {

class Captioned {
  public:
    virtual ~Captioned() = default;

    // Literal text: an ampersand is an ampersand.
    QString Caption() const { return caption_; }
    void SetCaption(const QString& caption);

    // False where an underlined letter would lead nowhere (a label without a buddy).
    virtual bool WantsMnemonic() const { return true; }
    // `position` counts UTF-16 units of the caption; -1 for none. Lasts until the caption changes.
    void ShowMnemonic(int position);

  protected:
    Captioned() = default;
    // `shown` is the caption as Qt's widgets want it: ampersands doubled, one before the letter.
    virtual void CaptionChanged(const QString& shown) = 0;

  private:
    QString caption_;
    int mnemonic_ = -1;
};

}  // namespace quarv::forms
