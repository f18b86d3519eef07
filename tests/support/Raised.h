// Raised: the number of the error that an action raises. Texts of failed expectations print
// readably where this is included.
#pragma once

#include <gtest/gtest.h>

#include "base/Error.h"
#include "support/TextPrinter.h"

namespace quarv {

// 0 where the action raises no Error.
template <typename Action>
int Raised(Action action) {
    try {
        action();
    } catch (const Error& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace quarv
