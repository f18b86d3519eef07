#include "base/Hooks.h"

namespace quarv {

Hooks& ProgramHooks() {
    static Hooks hooks;
    return hooks;
}

}  // namespace quarv
