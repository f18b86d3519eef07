#include "platform/forms/Bordered.h"

#include "base/RuntimeError.h"

namespace quarv::forms {

void Bordered::SetBorderStyle(int border) {
    if (border < 0 || border > 1) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    border_ = border;
    BorderChanged();
}

}  // namespace quarv::forms
