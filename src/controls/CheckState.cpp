#include "controls/CheckState.h"

namespace quarv {

std::optional<bool> CheckState::AfterKey(int character) const {
    switch (character) {
        case u' ':
            return !isChecked;
        case u'Y':
            return true;
        case u'N':
            return false;
        default:
            return std::nullopt;
    }
}

}  // namespace quarv
