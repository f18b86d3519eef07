#include "platform/forms/Label.h"

#include "base/RuntimeError.h"

namespace quarv::forms {

Label::Label(QWidget* container, const QString& name)
    : QLabel(container), Control(this, container, name) {
    setTextFormat(Qt::PlainText);
    SetWordWrap(true);
    RefreshSpokenName();
}

void Label::SetAlignment(int alignment) {
    if (alignment < 0 || alignment > 2) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    alignment_ = alignment;
    ApplyAlignment();
}

void Label::ApplyAlignment() {
    static constexpr Qt::AlignmentFlag Sides[] = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
    setAlignment(Sides[alignment_] | (wordWrap() ? Qt::AlignTop : Qt::AlignVCenter));
}

void Label::SetWordWrap(bool wrap) {
    setWordWrap(wrap);
    ApplyAlignment();
}

void Label::SetBuddy(Control& box) {
    named_ = &box;
    setBuddy(box.InnerWidget());
    SetCaption(Caption());
}

void Label::CaptionChanged(const QString& shown) {
    // Without a buddy an ampersand is shown as it stands.
    setText(buddy() == nullptr ? Caption() : shown);
    DeriveSpokenName(Caption());
    if (named_ == nullptr) return;
    QString name = Caption().trimmed();
    if (name.endsWith(u':')) name.chop(1);
    named_->DeriveSpokenName(name);
}

}  // namespace quarv::forms
