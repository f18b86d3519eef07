#include "platform/forms/Captioned.h"

#include "platform/forms/Mnemonics.h"

namespace quarv::forms {

void Captioned::SetCaption(const QString& caption) {
    if (caption != caption_) mnemonic_ = -1;
    caption_ = caption;
    CaptionChanged(WithMnemonic(caption_, mnemonic_));
}

void Captioned::ShowMnemonic(int position) {
    mnemonic_ = position;
    CaptionChanged(WithMnemonic(caption_, mnemonic_));
}

}  // namespace quarv::forms
