// WarmUp: loads what a database's first opening needs and the connection dialog does not, so that
// it is there when the user confirms the dialog. It opens nothing.
#pragma once

namespace quarv {

// To be called once the dialog is on the screen. What cannot be loaded is left alone: the opening
// will tell.
void WarmUp();

}  // namespace quarv
