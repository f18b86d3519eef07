// MsgBox: a message box. Its text is plain, whatever a server put into it; it can be selected, and
// a long one wraps and scrolls inside the screen.
#pragma once

#include <QString>

namespace quarv::forms {

enum class BoxIcon { None, Information, Question, Critical };
enum class BoxButtons { Ok, YesNo };
enum class BoxAnswer { Ok, Yes, No };

// Shows the box above the active window and waits for the answer. CR LF, CR and LF break lines. An
// empty title becomes the application's. Closing the box answers No, or Ok where that is the only
// button.
BoxAnswer MsgBox(const QString& text, const QString& title = {}, BoxIcon icon = BoxIcon::None,
                 BoxButtons buttons = BoxButtons::Ok);

}  // namespace quarv::forms
