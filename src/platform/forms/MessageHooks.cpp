#include "platform/forms/MessageHooks.h"

#include "base/Hooks.h"
#include "platform/forms/MsgBox.h"

namespace quarv::forms {

void RegisterMessageHooks() {
    ProgramHooks().showNote = [](const QString& text, const QString& title) {
        MsgBox(text, title, BoxIcon::Information);
    };
    ProgramHooks().askYesNo = [](const QString& text, const QString& title) {
        return MsgBox(text, title, BoxIcon::Question, BoxButtons::YesNo) == BoxAnswer::Yes;
    };
}

}  // namespace quarv::forms
