// MessageHooks: lets base show notes and ask questions, which it cannot do by itself.
#pragma once

namespace quarv::forms {

// Gives the program's note and question hooks (base/Hooks) to MsgBox. Once, at the program's start.
void RegisterMessageHooks();

}  // namespace quarv::forms
