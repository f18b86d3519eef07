#include "platform/forms/MsgBox.h"

#include "platform/forms/Application.h"
#include "platform/forms/MessageDialog.h"

namespace quarv::forms {

BoxAnswer MsgBox(const QString& text, const QString& title, BoxIcon icon, BoxButtons buttons) {
    MessageDialog dialog(QApplication::activeWindow(), text,
                         title.isEmpty() ? Application::Title() : title, icon, buttons);
    dialog.exec();
    return dialog.Answer();
}

}  // namespace quarv::forms
